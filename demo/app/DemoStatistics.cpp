#include "DemoStatistics.h"

#include "FilterStatisticsView.h"
#include "Manager.h"
#include "TextVar.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>

const char *const DemoStatistics::ConfigDatapoint = "AlarmScreenDemo.statisticsConfig";

DemoStatistics::DemoStatistics(const QString &projectDirectory, const WildcardConfig &wildcards,
                               const QSharedPointer<AlarmsModel> &model, QWidget *parent)
    : QObject(parent)
    , MsgLoggingProducer(&wildcards)
    , m_parent(parent)
    , m_view(new FilterStatisticsView(wildcards, parent))
    , m_loadAction(new QAction(tr("Load &Statistics Configuration..."), this))
    , m_directory(QDir(projectDirectory).filePath(QStringLiteral("config/statistics")))
{
    m_view->setObjectName(QStringLiteral("statisticsBar"));
    m_view->setUseSpoiler(true);
    m_view->setModel(model);
    m_view->setConfigDp(QLatin1String(ConfigDatapoint));
    if (!m_view->getErrorText().isEmpty())
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("no statistics bar: %1").arg(m_view->getErrorText()));
    m_loadAction->setObjectName(QStringLiteral("loadStatisticsAction"));
    m_loadAction->setEnabled(m_view->isConnected());
    connect(m_loadAction, &QAction::triggered, this, &DemoStatistics::chooseConfiguration);
}

bool DemoStatistics::loadConfiguration(const QString &file, QString &error)
{
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        error = tr("cannot read %1: %2").arg(file, in.errorString());
        return false;
    }
    const QString json = QString::fromUtf8(in.readAll());
    // The view checks the JSON when the hotlink brings it; a set that does
    // not parse empties the bar and is reported in the log.
    return Manager::dpSet(QLatin1String(ConfigDatapoint) + QStringLiteral(".SetJSON"), TextVar(json), error);
}

void DemoStatistics::chooseConfiguration()
{
    const QString file = QFileDialog::getOpenFileName(m_parent, tr("Load Statistics Configuration"), m_directory,
                                                      tr("Filter sets (*.json)"), nullptr,
                                                      QFileDialog::DontUseNativeDialog);
    if (file.isEmpty())
        return;
    m_directory = QFileInfo(file).absolutePath();
    QString error;
    if (loadConfiguration(file, error))
        emit status(tr("Statistics configuration loaded from %1").arg(file));
    else
        emit problem(tr("The statistics configuration was not loaded: %1").arg(error));
}
