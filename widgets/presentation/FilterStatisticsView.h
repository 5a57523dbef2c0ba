#pragma once

#include "DpIdentList.h"
#include "FilterViewConfiguration.h"
#include "HotLinkWaitForAnswer.h"
#include "MsgLoggingProducer.h"
#include "SourceAndFilter.h"
#include "WildcardConfig.h"
#include "widgets_export.h"

#include <QList>
#include <QMap>
#include <QPointer>
#include <QSharedPointer>
#include <QVariant>
#include <QWidget>

#include <memory>

class AlarmsModel;
class FilterStatistics;
class FilterStatisticsValueConsumer;
class FilterStatisticsWidget;
class QGridLayout;
class QVBoxLayout;
class Variable;

// Shows how many alarms of the alarm model match each filter of a filter set.
// The set is configured in a datapoint, not here: the view connects to its
// elements ".SetName", ".ConfigDp" and ".SetJSON", and each value they
// deliver rebuilds the grid of statistics cells from the JSON (an empty value
// leaves the view empty). The cells' signals are passed on to the owner.
class WIDGETS_EXPORT FilterStatisticsView : public QWidget, public MsgLoggingProducer
{
    Q_OBJECT
public:
    // Receives the configuration datapoint's values and hands them to the
    // view, as long as the view exists.
    class FilterConfigHotLink : public HotLinkWaitForAnswer, public MsgLoggingProducer
    {
    public:
        explicit FilterConfigHotLink(FilterStatisticsView *view);
        void hotLinkCallBack(DpMsgAnswer &answer) override;
        void hotLinkCallBack(DpHLGroup &group) override;

    private:
        void parseVarList(const QList<const Variable *> &list);

        QPointer<FilterStatisticsView> m_view;
    };

    explicit FilterStatisticsView(const WildcardConfig &wildcards, QWidget *parent = nullptr,
                                  Qt::WindowFlags flags = Qt::WindowFlags());
    ~FilterStatisticsView() override;

    // Connects to the named configuration datapoint (empty: none). A failure
    // is kept in getErrorText().
    void setConfigDp(const QString &dp);
    QString getConfigDp() const { return m_configDp; }
    QString getErrorText() const { return m_errorText; }
    bool isConnected() const { return m_connected; }
    bool connect(const QString &dp, const QSharedPointer<AlarmsModel> &model, QString &errorText);
    void disconnect();

    void setModel(const QSharedPointer<AlarmsModel> &model);
    void setSingleRowPerPair(bool single);
    void setUseSpoiler(bool use);
    void setOrientation(Qt::Orientation orientation);

    // Applies a filter set; returns the error text of a JSON that does not
    // parse (empty otherwise).
    QString newDpData(const QString &setName, const QString &configDp, const QString &json);
    void buildView();
    void buildViewGrid();
    void buildViewTree();
    void clearView();

    QGridLayout *createGridContainer(const FilterGridViewConfiguration &grid);
    QWidget *createWidgetForGrid(const FilterGridViewConfiguration &grid, const FilterViewItemConfiguration &item);

    // The statistics of the cell with that id, or a map with only "error".
    QMap<QString, QVariant> getFilterStatistics(const QString &id) const;
    QStringList getAllIds() const;
    // Marks the cells whose filter is the one the table applies.
    void compareWithCurrentFilter(const SourceAndFilter &current);

    const FilterViewConfiguration &getConfiguration() const { return m_config; }
    // The spoiler or frame that holds the grid; null while the view is empty.
    QWidget *getContent() const { return m_content; }

signals:
    void statsChanged(const FilterStatistics *stats);
    void statsContentChanged(const QString &filterDpName, const QMap<QString, QVariant> &statistics);
    void filterMousePressed(FilterStatisticsWidget *widget, int button, int x, int y);
    void filterMouseClicked(FilterStatisticsWidget *widget);

private:
    QList<FilterStatisticsWidget *> statisticsWidgets() const;

    WildcardConfig m_wildcards;
    QString m_configDp;
    QString m_errorText;
    QString m_setName;
    QString m_setConfigDp;
    QSharedPointer<AlarmsModel> m_model;
    std::unique_ptr<FilterStatisticsValueConsumer> m_consumer;
    DpIdentList m_ids;
    std::unique_ptr<FilterConfigHotLink> m_hotLink;
    bool m_connected = false;
    bool m_useSpoiler = false;
    bool m_singleRowPerPair = false;
    Qt::Orientation m_orientation = Qt::Horizontal;
    FilterViewConfiguration m_config;
    QVBoxLayout *m_layout = nullptr;
    QWidget *m_content = nullptr;
    QGridLayout *m_grid = nullptr;
    // Contents taken down but not yet deleted (deleteLater).
    QList<QPointer<QWidget>> m_retired;
    SourceAndFilter m_currentFilter;
};
