<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AlarmContextMenu</name>
    <message>
        <source>Acknowledged %1</source>
        <translation>%1 quittiert</translation>
    </message>
    <message>
        <source>%1 has no alarm to acknowledge</source>
        <translation>%1 hat keinen Alarm zum Quittieren</translation>
    </message>
    <message>
        <source>Copied %1</source>
        <translation>%1 kopiert</translation>
    </message>
</context>
<context>
    <name>DemoOptions</name>
    <message>
        <source>unknown option &apos;%1&apos;</source>
        <translation>unbekannte Option &apos;%1&apos;</translation>
    </message>
    <message>
        <source>option &apos;%1&apos; needs a value</source>
        <translation>Option &apos;%1&apos; braucht einen Wert</translation>
    </message>
    <message>
        <source>&apos;--quit-after&apos; needs a positive number of milliseconds, not &apos;%1&apos;</source>
        <translation>&apos;--quit-after&apos; braucht eine positive Zahl von Millisekunden, nicht &apos;%1&apos;</translation>
    </message>
    <message>
        <source>&apos;--lang&apos; needs a language such as de or en, not &apos;%1&apos;</source>
        <translation>&apos;--lang&apos; braucht eine Sprache wie de oder en, nicht &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Usage: alarmscreen-demo [--project DIR] [--screenshot FILE] [--quit-after MS] [--lang LANGUAGE]
  --project DIR      project directory (config/, colorDB/, scripts/libs/, bin/plugins/)
  --screenshot FILE  write a PNG of the window once the first alarms are shown, then quit
  --quit-after MS    quit after MS milliseconds
  --lang LANGUAGE    operator language, e.g. de or en (default: the system&apos;s)
</source>
        <translation>Aufruf: alarmscreen-demo [--project VERZ] [--screenshot DATEI] [--quit-after MS] [--lang SPRACHE]
  --project VERZ     Projektverzeichnis (config/, colorDB/, scripts/libs/, bin/plugins/)
  --screenshot DATEI ein PNG des Fensters schreiben, sobald die ersten Alarme angezeigt sind, dann beenden
  --quit-after MS    nach MS Millisekunden beenden
  --lang SPRACHE     Bediensprache, z. B. de oder en (Vorgabe: die des Systems)
</translation>
    </message>
</context>
<context>
    <name>DemoProject</name>
    <message>
        <source>the project directory %1 does not exist</source>
        <translation>das Projektverzeichnis %1 existiert nicht</translation>
    </message>
    <message>
        <source>the project directory %1 has no %2 folder</source>
        <translation>das Projektverzeichnis %1 hat keinen Ordner %2</translation>
    </message>
    <message>
        <source>no screen configuration %1, using the default columns and the built-in panel</source>
        <translation>keine Bildschirmkonfiguration %1, es gelten die Standardspalten und das eingebaute Panel</translation>
    </message>
    <message>
        <source>%1; using the default columns and the built-in panel</source>
        <translation>%1; es gelten die Standardspalten und das eingebaute Panel</translation>
    </message>
    <message>
        <source>%1: &apos;demo.title&apos; must be a string</source>
        <translation>%1: &apos;demo.title&apos; muss ein Text sein</translation>
    </message>
    <message>
        <source>%1: &apos;demo.groupedAtStart&apos; must be true or false</source>
        <translation>%1: &apos;demo.groupedAtStart&apos; muss true oder false sein</translation>
    </message>
    <message>
        <source>no %1 in the project, simulating the default systems</source>
        <translation>kein %1 im Projekt, die Standardsysteme werden simuliert</translation>
    </message>
    <message>
        <source>%1; simulating the default systems</source>
        <translation>%1; die Standardsysteme werden simuliert</translation>
    </message>
    <message>
        <source>datapoints not loaded: %1</source>
        <translation>Datenpunkte nicht geladen: %1</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Alarm text</source>
        <translation>Alarmtext</translation>
    </message>
    <message>
        <source>Datapoint element</source>
        <translation>Datenpunktelement</translation>
    </message>
</context>
<context>
    <name>DemoRunner</name>
    <message>
        <source>cannot write the screenshot %1</source>
        <translation>das Bildschirmfoto %1 kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>Screenshot written to %1</source>
        <translation>Bildschirmfoto geschrieben: %1</translation>
    </message>
</context>
<context>
    <name>DemoStatistics</name>
    <message>
        <source>Load &amp;Statistics Configuration...</source>
        <translation>&amp;Statistikkonfiguration laden...</translation>
    </message>
    <message>
        <source>cannot read %1: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>Load Statistics Configuration</source>
        <translation>Statistikkonfiguration laden</translation>
    </message>
    <message>
        <source>Filter sets (*.json)</source>
        <translation>Filtersätze (*.json)</translation>
    </message>
    <message>
        <source>Statistics configuration loaded from %1</source>
        <translation>Statistikkonfiguration geladen aus %1</translation>
    </message>
    <message>
        <source>The statistics configuration was not loaded: %1</source>
        <translation>Die Statistikkonfiguration wurde nicht geladen: %1</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Alarm screen demo</source>
        <translation>Alarmschirm-Demo</translation>
    </message>
    <message numerus="yes">
        <source>%n problem(s) found, see the log; the first: %1</source>
        <translation>
            <numerusform>%n Problem gefunden, siehe Protokoll: %1</numerusform>
            <numerusform>%n Probleme gefunden, siehe Protokoll; das erste: %1</numerusform>
        </translation>
    </message>
    <message>
        <source>the panel plug-in &apos;%1&apos; was not found in the project&apos;s bin/plugins folder; using the built-in panel</source>
        <translation>das Panel-Plug-in &apos;%1&apos; fehlt im Ordner bin/plugins des Projekts; das eingebaute Panel wird verwendet</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>F&amp;ilter</source>
        <translation>F&amp;ilter</translation>
    </message>
    <message>
        <source>&amp;Save Filter...</source>
        <translation>Filter &amp;speichern...</translation>
    </message>
    <message>
        <source>&amp;Load Filter...</source>
        <translation>Filter &amp;laden...</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Grouped</source>
        <translation>&amp;Gruppiert</translation>
    </message>
    <message>
        <source>Group the alarms: %1</source>
        <translation>Alarme gruppieren: %1</translation>
    </message>
    <message>
        <source>The screen configuration defines no grouping</source>
        <translation>Die Bildschirmkonfiguration legt keine Gruppierung fest</translation>
    </message>
    <message>
        <source>Alarm table</source>
        <translation>Alarmtabelle</translation>
    </message>
    <message>
        <source>History query refused: %1</source>
        <translation>Archivabfrage abgelehnt: %1</translation>
    </message>
    <message>
        <source>History query started</source>
        <translation>Archivabfrage gestartet</translation>
    </message>
    <message>
        <source>Save Filter</source>
        <translation>Filter speichern</translation>
    </message>
    <message>
        <source>Filter files (*.json)</source>
        <translation>Filterdateien (*.json)</translation>
    </message>
    <message>
        <source>Filter saved to %1</source>
        <translation>Filter gespeichert in %1</translation>
    </message>
    <message>
        <source>The filter was not saved: %1</source>
        <translation>Der Filter wurde nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>Load Filter</source>
        <translation>Filter laden</translation>
    </message>
    <message>
        <source>The filter was not loaded: %1</source>
        <translation>Der Filter wurde nicht geladen: %1</translation>
    </message>
    <message>
        <source>Filter loaded from %1</source>
        <translation>Filter geladen aus %1</translation>
    </message>
    <message>
        <source>The loaded filter is applied but cannot be shown: %1</source>
        <translation>Der geladene Filter ist angewendet, kann aber nicht angezeigt werden: %1</translation>
    </message>
    <message>
        <source>History query failed: %1</source>
        <translation>Archivabfrage fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>history</source>
        <translation>historisch</translation>
    </message>
    <message>
        <source>live</source>
        <translation>aktuell</translation>
    </message>
    <message>
        <source>%1 of %2 alarms shown (%3)</source>
        <translation>%1 von %2 Alarmen angezeigt (%3)</translation>
    </message>
    <message>
        <source>no statistics bar: %1</source>
        <translation>keine Statistikleiste: %1</translation>
    </message>
    <message>
        <source>&amp;Statistics</source>
        <translation>&amp;Statistik</translation>
    </message>
</context>
<context>
    <name>TableServices</name>
    <message>
        <source>&amp;Export CSV...</source>
        <translation>CSV &amp;exportieren...</translation>
    </message>
    <message>
        <source>Exporting alarms to CSV...</source>
        <translation>Alarme werden als CSV exportiert...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Export CSV</source>
        <translation>CSV-Export</translation>
    </message>
    <message>
        <source>Alarms exported to CSV in %1</source>
        <translation>Alarme als CSV exportiert nach %1</translation>
    </message>
    <message>
        <source>The alarms were not exported: %1</source>
        <translation>Die Alarme wurden nicht exportiert: %1</translation>
    </message>
</context>
</TS>
