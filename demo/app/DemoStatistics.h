#pragma once

#include "MsgLoggingProducer.h"
#include "WildcardConfig.h"

#include <QObject>
#include <QSharedPointer>
#include <QString>

class AlarmsModel;
class FilterStatisticsView;
class QAction;
class QWidget;

// The statistics bar of the demo: a filter statistics view (folding away in
// a spoiler) configured by the project's datapoint
// "AlarmScreenDemo.statisticsConfig", and the operator's way to load another
// filter set into that datapoint ("Load Statistics Configuration...", from
// the project's config/statistics/ folder by default). The bar follows the
// datapoint, so it rebuilds as soon as the new JSON is set.
class DemoStatistics : public QObject, public MsgLoggingProducer
{
    Q_OBJECT
public:
    static const char *const ConfigDatapoint;

    DemoStatistics(const QString &projectDirectory, const WildcardConfig &wildcards,
                   const QSharedPointer<AlarmsModel> &model, QWidget *parent);

    FilterStatisticsView *getView() const { return m_view; }
    QAction *getLoadAction() const { return m_loadAction; }
    // Sets the datapoint's JSON to the file's text; false with the reason.
    bool loadConfiguration(const QString &file, QString &error);

signals:
    void problem(const QString &text);
    void status(const QString &text);

private:
    void chooseConfiguration();

    QWidget *m_parent;
    FilterStatisticsView *m_view;
    QAction *m_loadAction;
    QString m_directory;
};
