#include "PatternCompleter.h"

#include "CompletionPopupView.h"

#include <QStringListModel>

#include <algorithm>
#include <utility>
#include <vector>

PatternCompleter::PatternCompleter(QObject *parent) : QCompleter(parent)
{
    setPopup(new CompletionPopupView);
    setCompletionMode(QCompleter::PopupCompletion);
    setWrapAround(false);
}

void PatternCompleter::setValues(const QStringList &values, bool matchCase)
{
    setSortedValues(sortedValues(values, matchCase), matchCase);
}

void PatternCompleter::setSortedValues(const QStringList &sorted, bool matchCase)
{
    setModel(new QStringListModel(sorted, this));
    setModelSorting(matchCase ? QCompleter::CaseSensitivelySortedModel : QCompleter::CaseInsensitivelySortedModel);
    setCaseSensitivity(matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

QStringList PatternCompleter::sortedValues(const QStringList &values, bool matchCase)
{
    QStringList sorted = values;
    if (matchCase) {
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    }
    // Folding once per value instead of at every comparison: a hundred thousand
    // values sort several times faster.
    std::vector<std::pair<QString, int>> keys;
    keys.reserve(size_t(values.size()));
    for (int i = 0; i < values.size(); ++i)
        keys.emplace_back(values.at(i).toCaseFolded(), i);
    std::sort(keys.begin(), keys.end());
    for (int i = 0; i < values.size(); ++i)
        sorted[i] = values.at(keys[size_t(i)].second);
    return sorted;
}
