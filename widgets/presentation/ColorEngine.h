#pragma once

#include "Color.h"
#include "ColorUsageCounter.h"
#include "widgets_export.h"

#include <QDir>
#include <QMap>
#include <QObject>
#include <QPalette>
#include <QSharedPointer>
#include <QVector>

class QTimer;

// The process-wide colour engine: it reads every colour database of the
// project paths once, resolves aliases, adds a few colours of the
// application palette ("_3DFace", "_Window", ...), and every 125 ms moves
// blinking colours on by one tick. A colour that changes its phase is
// announced with colorChanged() only while somebody uses it (see
// ColorUsageCounter), so that idle blinking colours cost no repaint.
//
// A database line is one of
//   "Name" N {r,g,b[,a]}          components 0..255
//   "Name" N [r,g,b[,a]]          percentages (truncated: 100 is 254)
//   "Name" N "Other" / "Name" "Other"   an alias of another colour
//   "Name" N <{..} 4 [..] 2 "X" 4>      blinking, each phase for n ticks
// Lines of digits only are skipped; anything else is logged and left out.
class WIDGETS_EXPORT ColorEngine : public QObject, public ColorUsageCounter
{
    Q_OBJECT
public:
    // The engine of the process, built and loaded on the first call; the
    // producer of later calls is ignored.
    static QSharedPointer<ColorEngine> getInstance(const MsgLoggingProducer *producer);

    ColorEngine(const MsgLoggingProducer *producer, QObject *parent);
    ~ColorEngine() override;

    // Never null: an unknown name is parsed as a colour value itself (so
    // "{255,0,0}" works directly), else it becomes opaque black; either way
    // it is remembered, so it is parsed and reported once.
    QSharedPointer<Color> getColor(const QString &name) const;
    const QMap<QString, QSharedPointer<Color>> &getColorMap() const { return m_colors; }

    void loadAllColorDbs();
    // The colour database files in reading order: later files win.
    QVector<QString> getColorDbs() const;
    void addColorDbOfDir(QDir &dir, QVector<QString> &files) const;
    void addColorDatabase(const QString &file);
    static QMap<QString, QSharedPointer<Color>> parseColorDatabaseFile(const MsgLoggingProducer *producer,
                                                                       const QString &file);

    static QSharedPointer<Color> parseColorLine(const MsgLoggingProducer *producer, QString line);
    static bool parseColorValue(const MsgLoggingProducer *producer, QSharedPointer<Color> &color,
                                const QString &value);
    static bool parseNextColorDef(const MsgLoggingProducer *producer, QString &rest, bool blinking,
                                  QSharedPointer<Color> &color);
    static QColor takeColor255Based(const MsgLoggingProducer *producer, QString &rest);
    static QColor takeColor100Based(const MsgLoggingProducer *producer, QString &rest);
    static QString takeColorAlias(const MsgLoggingProducer *producer, QString &rest);
    static void removeProcessedStringPart(const QString &processed, QString &rest);

    void addApplicationPaletteColors();
    void addApplicationPaletteColor(const QString &name, QPalette::ColorRole role);
    void resoveAliases();

signals:
    void colorChanged(const QString &name, const QColor &color);

private slots:
    void blinkingTimeout();

private:
    // Unknown names are added on lookup, hence mutable.
    mutable QMap<QString, QSharedPointer<Color>> m_colors;
    QTimer *m_blinkTimer = nullptr;
    static QSharedPointer<ColorEngine> m_instance;
};
