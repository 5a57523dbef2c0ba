#pragma once

#include "FilterStatisticsValueConsumer.h"
#include "widgets_export.h"

#include <QFrame>
#include <QMap>
#include <QSharedPointer>
#include <QVariant>

class ColorEngine;
class QLabel;

// One cell of a filter statistics view: the counts of one filter, shown as a
// label whose text, tool tip and colours come from the item's templates. Colour
// values are looked up in the colour engine, so a cell follows blinking
// colours; it repaints only when a colour it shows changes. Mouse presses and
// releases on the cell are reported to the owner.
class WIDGETS_EXPORT FilterStatisticsWidget : public QFrame, public FilterStatisticsValueConsumer
{
    Q_OBJECT
public:
    FilterStatisticsWidget(MsgLoggingProducer *producer, QWidget *parent = nullptr,
                           Qt::WindowFlags flags = Qt::WindowFlags());
    ~FilterStatisticsWidget() override;

    void setFilterDpName(const QString &dpName) override;
    void setFilter(const QString &id, const SourceAndFilter &filter) override;
    void setModel(const QSharedPointer<AlarmsModel> &model) override;
    void setTextTemplate(const QString &text) override;
    void setTooTipTemplate(const QString &toolTip) override;
    void setBackColorSource(const FilterViewItemConfiguration::StatsColorSource &source) override;
    void setForeColorSource(const FilterViewItemConfiguration::StatsColorSource &source) override;
    // Shows in bold whether this cell's filter is the one the table applies.
    void matchCurrentFilterChanged() override;

    // The text that replaces `placeholder`; a colour value becomes "#rrggbb"
    // of its colour's current phase.
    QString getReplacementString(const FilterStatisticsValue *value, const FilterStatistics *stats,
                                 const QString &placeholder) const;
    // Every placeholder's value, the templates, and "error" while the cell
    // has no configuration datapoint or no statistics yet.
    QMap<QString, QVariant> getStatisticsAsMap() const;
    void applyNewColor(bool fromStatistics);
    void setNewToolTip(const QString &toolTip);

    QLabel *getLabel() const { return m_label; }

signals:
    void statsChanged(const FilterStatistics *stats);
    void statsContentChanged(const QString &filterDpName, const QMap<QString, QVariant> &statistics);
    // Button: left 1, middle 2, right 3, other 0; x and y within the cell.
    void mousePressed(FilterStatisticsWidget *widget, int button, int x, int y);
    void mouseClicked(FilterStatisticsWidget *widget);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void blinkHandler(const QString &name, const QColor &color);
    void statsSourceChanged(const FilterStatistics *stats);

private:
    QString renderLabel(const QString &templ, const FilterStatistics *stats) const;
    QColor currentColor(const FilterStatisticsValue *source) const;

    QSharedPointer<ColorEngine> m_engine;
    QLabel *m_label = nullptr;
};
