#!/usr/bin/env bash
# Brings the translation sources (.ts) up to date with the code: lupdate reads
# the operator texts (tr() in C++ sources, strings of Designer forms) and adds
# new ones as unfinished, drops texts the code no longer has, and keeps every
# finished translation. Run it after changing operator texts, translate what it
# reports as unfinished (Qt Linguist or any editor), and commit the .ts files;
# the build turns them into .qm files.
#
# Usage: tools/update-translations.sh [LANGUAGE...]
#   Without arguments every language that already has a .ts file is updated;
#   a language given on the command line (e.g. "fr") gets its files created.
# Running it twice changes nothing the second time. Source locations are left
# out of the .ts files so that code edits elsewhere do not touch them.
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
cd "$src"

lupdate="$(command -v lupdate || true)"
[[ -n "$lupdate" ]] || lupdate=/usr/lib/qt5/bin/lupdate
if [[ ! -x "$lupdate" ]]; then
  echo "lupdate not found: install qttools5-dev-tools (tools/setup.sh does)" >&2
  exit 1
fi

# catalogue | where its .ts files live | the source folders it covers
catalogues=(
  "alarmscreen_model|alarmmodel/translations|alarmmodel"
  "alarmscreen_widgets|widgets/translations|widgets plugins"
  "alarmscreen_demo|demo/translations|demo/app demo/main.cpp"
)

requested=("$@")
total_unfinished=0
for entry in "${catalogues[@]}"; do
  IFS='|' read -r name dir sources <<<"$entry"
  existing=()
  for s in $sources; do
    [[ -e "$s" ]] && existing+=("$s")
  done
  ((${#existing[@]})) || continue

  languages=()
  for ts in "$dir/${name}"_*.ts; do
    [[ -e "$ts" ]] || continue
    lang="${ts##*/${name}_}"
    languages+=("${lang%.ts}")
  done
  languages+=("${requested[@]}")
  mapfile -t languages < <(printf '%s\n' "${languages[@]}" | sed '/^$/d' | sort -u)

  mkdir -p "$dir"
  for lang in "${languages[@]}"; do
    ts="$dir/${name}_${lang}.ts"
    "$lupdate" -silent -no-obsolete -locations none -extensions cpp,h,ui \
      -source-language en -target-language "$lang" "${existing[@]}" -ts "$ts"
    # Count unfinished messages (numerus forms count once) and name them.
    unfinished="$(awk '
      /<name>/ && !context { sub(/.*<name>/, ""); sub(/<\/name>.*/, ""); context = $0; next }
      /<\/context>/ { context = "" }
      /<source>/ { source = $0; sub(/.*<source>/, "", source); sub(/<\/source>.*/, "", source) }
      /type="unfinished"/ { print "  " context ": " source }' "$ts")"
    count=0
    [[ -n "$unfinished" ]] && count="$(printf '%s\n' "$unfinished" | wc -l)"
    total_unfinished=$((total_unfinished + count))
    echo "$ts: $count unfinished"
    [[ -n "$unfinished" ]] && printf '%s\n' "$unfinished"
  done
done
echo "Unfinished messages in all: $total_unfinished"
