<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AlarmInstance</name>
    <message>
        <source>Came/unack.</source>
        <translation>Kam/unquitt.</translation>
    </message>
    <message>
        <source>Came/ack.</source>
        <translation>Kam/quitt.</translation>
    </message>
    <message>
        <source>Went/unack.</source>
        <translation>Ging/unquitt.</translation>
    </message>
    <message>
        <source>Went/ack.</source>
        <translation>Ging/quitt.</translation>
    </message>
    <message>
        <source>came</source>
        <translation>kam</translation>
    </message>
    <message>
        <source>went</source>
        <translation>ging</translation>
    </message>
    <message>
        <source>disconnected</source>
        <translation>getrennt</translation>
    </message>
    <message>
        <source>connected</source>
        <translation>verbunden</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
</context>
<context>
    <name>AlarmsProxyModel</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>Constants</name>
    <message>
        <source>Disconnected</source>
        <translation>Getrennt</translation>
    </message>
    <message>
        <source>NoQuery</source>
        <translation>Keine Abfrage</translation>
    </message>
    <message>
        <source>Connecting</source>
        <translation>Verbindungsaufbau</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Wird geladen</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Aktuell</translation>
    </message>
    <message>
        <source>Starting query</source>
        <translation>Abfrage wird gestartet</translation>
    </message>
    <message>
        <source>Query running</source>
        <translation>Abfrage läuft</translation>
    </message>
    <message>
        <source>Query finished</source>
        <translation>Abfrage beendet</translation>
    </message>
    <message>
        <source>Query failed</source>
        <translation>Abfrage fehlgeschlagen</translation>
    </message>
    <message>
        <source>Query aborted</source>
        <translation>Abfrage abgebrochen</translation>
    </message>
    <message>
        <source>Unknown (%1)</source>
        <translation>Unbekannt (%1)</translation>
    </message>
</context>
<context>
    <name>MsgLoggerModel</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Schweregrad</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
</context>
<context>
    <name>TextMatcher</name>
    <message>
        <source>unknown match method %1</source>
        <translation>unbekannte Vergleichsart %1</translation>
    </message>
    <message>
        <source>invalid regular expression &apos;%1&apos;: %2 at offset %3</source>
        <translation>ungültiger regulärer Ausdruck &apos;%1&apos;: %2 an Position %3</translation>
    </message>
</context>
<context>
    <name>TimeRange</name>
    <message>
        <source> minutes</source>
        <translation> Minuten</translation>
    </message>
    <message>
        <source> hours</source>
        <translation> Stunden</translation>
    </message>
    <message>
        <source> days</source>
        <translation> Tage</translation>
    </message>
    <message>
        <source> weeks</source>
        <translation> Wochen</translation>
    </message>
    <message>
        <source> months</source>
        <translation> Monate</translation>
    </message>
    <message>
        <source>Last %1%2</source>
        <translation>Letzte %1%2</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>Gestern</translation>
    </message>
    <message>
        <source>This week</source>
        <translation>Diese Woche</translation>
    </message>
    <message>
        <source>Previous week</source>
        <translation>Vorige Woche</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>Dieser Monat</translation>
    </message>
</context>
<context>
    <name>ValueFilterNumbers</name>
    <message>
        <source>equal to %1</source>
        <translation>gleich %1</translation>
    </message>
    <message>
        <source>greater than %1</source>
        <translation>größer als %1</translation>
    </message>
    <message>
        <source>less than %1</source>
        <translation>kleiner als %1</translation>
    </message>
    <message>
        <source>between %1 and %2</source>
        <translation>zwischen %1 und %2</translation>
    </message>
    <message>
        <source>not %1</source>
        <translation>nicht %1</translation>
    </message>
</context>
<context>
    <name>ValueFilterText</name>
    <message>
        <source>empty pattern</source>
        <translation>leeres Suchmuster</translation>
    </message>
    <message>
        <source>unknown match method %1</source>
        <translation>unbekannte Vergleichsart %1</translation>
    </message>
</context>
</TS>
