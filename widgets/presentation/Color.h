#pragma once

#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QColor>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QVector>

class ColorEngine;

// One named colour of the colour database. A plain colour has one phase; a
// blinking colour has several, each shown for a number of engine ticks. A
// phase is either a colour or the name of another colour (an alias) whose
// first phase lends it its colour once aliases are resolved.
class WIDGETS_EXPORT Color : public MsgLoggingProducer
{
public:
    class WIDGETS_EXPORT ColorEntry : public MsgLoggingProducer
    {
    public:
        explicit ColorEntry(const MsgLoggingProducer *producer);
        ColorEntry(const MsgLoggingProducer *producer, const QColor &color, int duration);
        ColorEntry(const MsgLoggingProducer *producer, const QString &aliasName, int duration);

        const QString &getAliasName() const { return m_aliasName; }
        bool isAlias() const { return !m_aliasName.isEmpty(); }
        const QColor &getColor() const { return m_color; }
        // Engine ticks this phase is shown: -1 for a colour made in code, 0
        // outside a blinking definition.
        int getDuration() const { return m_duration; }
        // True only for an entry defined by a colour: a resolved alias has a
        // colour but not this flag.
        bool hasColor() const { return m_hasColor; }

        // Copies the colour of the first phase of the colour the alias names.
        // `searchStack` holds the aliases followed so far, to stop a loop.
        void findColorForAlias(const QMap<QString, QSharedPointer<Color>> &colors, QStringList &searchStack) const;

    private:
        QString m_aliasName;
        // Filled in for an alias by findColorForAlias(), hence mutable.
        mutable QColor m_color;
        int m_duration = -1;
        bool m_hasColor = false;
    };

    explicit Color(const MsgLoggingProducer *producer);
    Color(const MsgLoggingProducer *producer, const QString &name);
    Color(const MsgLoggingProducer *producer, const QString &name, const QColor &color);
    Color(const MsgLoggingProducer *producer, const QString &name, const QString &aliasName);

    const QString &getName() const { return m_name; }
    const QVector<QSharedPointer<ColorEntry>> &getEntries() const { return m_entries; }
    void addEntry(const QSharedPointer<ColorEntry> &entry) { m_entries.append(entry); }
    int getCurrentIndex() const { return m_currentIndex; }
    // The colour of the phase shown now; invalid without phases.
    QColor getCurrentColor() const;
    bool isBlinking() const { return m_entries.size() > 1; }

    void resolveAliases(const QMap<QString, QSharedPointer<Color>> &colors);
    // A colour without phases becomes opaque black.
    void ensureNotEmpty();

private:
    friend class ColorEngine; // advances the phases

    QString m_name;
    QVector<QSharedPointer<ColorEntry>> m_entries;
    int m_currentIndex = 0;
    int m_tickCounter = 0;
};
