<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>DialogCsvOptions</name>
    <message>
        <source>Options for export to CSV</source>
        <translation>Optionen für den CSV-Export</translation>
    </message>
    <message>
        <source>Export all rows</source>
        <translation>Alle Zeilen exportieren</translation>
    </message>
    <message>
        <source>Export selected rows</source>
        <translation>Ausgewählte Zeilen exportieren</translation>
    </message>
    <message>
        <source>Include column headers</source>
        <translation>Mit Spaltenüberschriften</translation>
    </message>
    <message>
        <source>Including grouping</source>
        <translation>Mit Gruppierung</translation>
    </message>
    <message>
        <source>CSV separator character:</source>
        <translation>CSV-Trennzeichen:</translation>
    </message>
</context>
<context>
    <name>ExporterCSV</name>
    <message>
        <source>Please select output CSV file</source>
        <translation>Bitte die CSV-Zieldatei auswählen</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV-Dateien (*.csv)</translation>
    </message>
    <message>
        <source>no output file selected for export</source>
        <translation>keine Zieldatei für den Export ausgewählt</translation>
    </message>
    <message>
        <source>failed to open file for writing: error %1 for file %2</source>
        <translation>Datei konnte nicht zum Schreiben geöffnet werden: Fehler %1 bei Datei %2</translation>
    </message>
    <message>
        <source>writing to file failed: %1</source>
        <translation>Schreiben in die Datei fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>NULL tree view passed to exportToCsv() method</source>
        <translation>exportToCsv() ohne Tabellenansicht aufgerufen</translation>
    </message>
    <message>
        <source>tree view without model passed to exportToCsv() method</source>
        <translation>exportToCsv() mit einer Tabellenansicht ohne Modell aufgerufen</translation>
    </message>
    <message>
        <source>unknown column title &apos;%1&apos; for exporting to CSV</source>
        <translation>unbekannte Spaltenüberschrift &apos;%1&apos; für den CSV-Export</translation>
    </message>
    <message>
        <source>failed to get valid index for row %1</source>
        <translation>kein gültiger Index für Zeile %1 gefunden</translation>
    </message>
    <message>
        <source>model returned invalid index for row %1</source>
        <translation>das Modell lieferte einen ungültigen Index für Zeile %1</translation>
    </message>
    <message>
        <source>export cancelled by the operator</source>
        <translation>Export vom Bediener abgebrochen</translation>
    </message>
    <message>
        <source>the table changed during the export</source>
        <translation>die Tabelle hat sich während des Exports geändert</translation>
    </message>
</context>
<context>
    <name>FilterStatisticsView</name>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
</context>
<context>
    <name>MouseEventProcessor</name>
    <message>
        <source>Expand all nodes</source>
        <translation>Alle Knoten aufklappen</translation>
    </message>
    <message>
        <source>Collapse all nodes</source>
        <translation>Alle Knoten zuklappen</translation>
    </message>
</context>
<context>
    <name>QueryStateDisplay</name>
    <message>
        <source>Source state:</source>
        <translation>Zustand der Quelle:</translation>
    </message>
    <message>
        <source>Current state of alarm source</source>
        <translation>Aktueller Zustand der Alarmquelle</translation>
    </message>
    <message>
        <source>NoQuery</source>
        <translation>Keine Abfrage</translation>
    </message>
    <message>
        <source>total number of alarms read from archive</source>
        <translation>Gesamtzahl der aus dem Archiv gelesenen Alarme</translation>
    </message>
    <message>
        <source>Total alarms read:</source>
        <translation>Gelesene Alarme gesamt:</translation>
    </message>
    <message>
        <source>0</source>
        <translation>0</translation>
    </message>
    <message>
        <source>Matching alarms:</source>
        <translation>Passende Alarme:</translation>
    </message>
    <message>
        <source>Total time spent for query execution</source>
        <translation>Gesamtdauer der Abfrage</translation>
    </message>
    <message>
        <source>Time spent:</source>
        <translation>Dauer:</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Abort query execution</source>
        <translation>Abfrage abbrechen</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>QuickFilterEditor</name>
    <message>
        <source>Edit options</source>
        <translation>Optionen bearbeiten</translation>
    </message>
    <message>
        <source>Incorrect pattern: </source>
        <translation>Ungültiges Suchmuster: </translation>
    </message>
</context>
<context>
    <name>QuickFilterOptions</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Modus</translation>
    </message>
    <message>
        <source>Wildcard</source>
        <translation>Platzhalter</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Regulärer Ausdruck</translation>
    </message>
    <message>
        <source>String literal</source>
        <translation>Exakter Text</translation>
    </message>
    <message>
        <source>Case sensitive</source>
        <translation>Groß-/Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>The filter shall match the whole content of column</source>
        <translation>Der Filter muss den ganzen Inhalt der Spalte treffen</translation>
    </message>
    <message>
        <source>Match full column</source>
        <translation>Ganze Spalte vergleichen</translation>
    </message>
</context>
<context>
    <name>SourceAndFiltersUi</name>
    <message>
        <source>as EWO doesn&apos;t contains source control, archive mode can&apos;t be set</source>
        <translation>das EWO enthält keine Quellenauswahl, der Archivmodus kann nicht eingestellt werden</translation>
    </message>
    <message>
        <source>there is no editor to display content of structured filter</source>
        <translation>kein Editor kann den Inhalt des strukturierten Filters anzeigen</translation>
    </message>
</context>
<context>
    <name>SourceUiLong</name>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Aktuell</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Historisch</translation>
    </message>
    <message>
        <source>Time range for archive query</source>
        <translation>Zeitbereich der Archivabfrage</translation>
    </message>
    <message>
        <source>Time Range</source>
        <translation>Zeitbereich</translation>
    </message>
    <message>
        <source>Systems selected for archive query</source>
        <translation>Für die Archivabfrage ausgewählte Systeme</translation>
    </message>
    <message>
        <source>Systems 0/0</source>
        <translation>Systeme 0/0</translation>
    </message>
    <message>
        <source>NoQuery</source>
        <translation>Keine Abfrage</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Matching: 0 / Total read: 0</source>
        <translation>Passend: 0 / Gelesen: 0</translation>
    </message>
    <message>
        <source>Abort runnung query</source>
        <translation>Laufende Abfrage abbrechen</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Click Apply button to view alarms according to selection</source>
        <translation>Auf „Anwenden“ klicken, um die Alarme gemäß der Auswahl anzuzeigen</translation>
    </message>
    <message>
        <source>&gt;&gt;&gt;&gt;</source>
        <translation>&gt;&gt;&gt;&gt;</translation>
    </message>
    <message>
        <source>Apply source/filter to model</source>
        <translation>Quelle und Filter anwenden</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Systems %1 / %2</source>
        <translation>Systeme %1 / %2</translation>
    </message>
    <message>
        <source>Matching: %1 / Total read: %2</source>
        <translation>Passend: %1 / Gelesen: %2</translation>
    </message>
</context>
<context>
    <name>Spoiler</name>
    <message>
        <source>Show/hide</source>
        <translation>Ein-/ausblenden</translation>
    </message>
</context>
<context>
    <name>SystemSelectionModel</name>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Unknwon system name: %1</source>
        <translation>Unbekannter Systemname: %1</translation>
    </message>
</context>
<context>
    <name>SystemSelectionTable</name>
    <message>
        <source>Filter:</source>
        <translation>Filter:</translation>
    </message>
    <message>
        <source>Select all matching systems in table</source>
        <translation>Alle passenden Systeme der Tabelle auswählen</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Alle auswählen</translation>
    </message>
    <message>
        <source>Unselect all matching systems in table</source>
        <translation>Auswahl aller passenden Systeme der Tabelle aufheben</translation>
    </message>
    <message>
        <source>Unselect all</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message>
        <source>Matching 0</source>
        <translation>Passend 0</translation>
    </message>
    <message>
        <source>Selected: 0 / 0</source>
        <translation>Ausgewählt: 0 / 0</translation>
    </message>
    <message>
        <source>Close system list</source>
        <translation>Systemliste schließen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Matching %1</source>
        <translation>Passend %1</translation>
    </message>
    <message>
        <source>Selected %1/%2</source>
        <translation>Ausgewählt %1/%2</translation>
    </message>
</context>
<context>
    <name>TimeRangeEditor</name>
    <message>
        <source>Type of time interval:</source>
        <translation>Art des Zeitbereichs:</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>Set start of interval to current time</source>
        <translation>Beginn auf die aktuelle Zeit setzen</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>to</source>
        <translation>bis</translation>
    </message>
    <message>
        <source>Set end of interval to current time</source>
        <translation>Ende auf die aktuelle Zeit setzen</translation>
    </message>
    <message>
        <source>Time zone  </source>
        <translation>Zeitzone  </translation>
    </message>
</context>
<context>
    <name>WFilter</name>
    <message>
        <source>attempt to set filter for value &apos;%1&apos; to widget for column &apos;%2&apos;</source>
        <translation>Filter für den Wert &apos;%1&apos; passt nicht zum Editor der Spalte &apos;%2&apos;</translation>
    </message>
    <message>
        <source>attempt to set filter for value &apos;%1&apos; source %2 to widget for source &apos;%3&apos;</source>
        <translation>Filter für den Wert &apos;%1&apos; der Quelle %2 passt nicht zum Editor der Quelle &apos;%3&apos;</translation>
    </message>
</context>
<context>
    <name>WFilterToggleButton</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
</context>
</TS>
