#include "AlarmClassColors.h"

#include "AlarmsProxyModel.h"
#include "ColorEngine.h"

#include <QAbstractItemView>

namespace {
const char *const classes[] = {"alert", "warning", "info"};
}

AlarmClassColors::AlarmClassColors(AlarmsProxyModel *proxy, QAbstractItemView *view, const MsgLoggingProducer *logger)
    : QStyledItemDelegate(view), MsgLoggingProducer(logger), m_proxy(proxy), m_view(view),
      m_engine(ColorEngine::getInstance(logger))
{
    for (const char *name : classes) {
        const QString steady = QLatin1String(name);
        // Only names of the database: an unknown one would be painted black.
        for (const QString &color : {steady, steady + QStringLiteral("Unack")}) {
            if (m_engine->getColorMap().contains(color)) {
                m_names << color;
                m_engine->incrementColorUsage(color);
            } else {
                ASLOG(this, MsgLoggerEnums::Warning,
                      QStringLiteral("the colour database has no colour '%1'; its alarms keep the table's colours").arg(color));
            }
        }
    }
    connect(m_engine.data(), &ColorEngine::colorChanged, this, &AlarmClassColors::colorChanged);
}

AlarmClassColors::~AlarmClassColors()
{
    for (const QString &name : qAsConst(m_names))
        m_engine->decrementColorUsage(name);
}

QString AlarmClassColors::colorNameFor(const QModelIndex &index) const
{
    const QSharedPointer<AlarmInstance> alarm = m_proxy->getAlarmAtRow(index);
    if (!alarm)
        return QString();
    const QString name = alarm->getData().alarmClass + (alarm->isAcknowledged() ? QString() : QStringLiteral("Unack"));
    return m_names.contains(name) ? name : QString();
}

void AlarmClassColors::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const QString name = colorNameFor(index);
    if (!name.isEmpty())
        option->backgroundBrush = QBrush(m_engine->getColor(name)->getCurrentColor());
}

void AlarmClassColors::colorChanged(const QString &name)
{
    if (m_names.contains(name))
        m_view->viewport()->update();
}
