#include "WFilter.h"

#include "ValueFilter.h"

WFilter::WFilter(const WildcardConfig &config, const QString &columnId,
                 Constants::ValueSource source, QWidget *parent)
    : QWidget(parent), MsgLoggingProducer(&config), m_wildcardConfig(config),
      m_columnId(columnId), m_source(source)
{
}

WFilter::~WFilter() = default;

void WFilter::setCompletionStrings(const QStringList &strings)
{
    Q_UNUSED(strings)
}

QString WFilter::getColumnId() const
{
    return m_columnId;
}

Constants::ValueSource WFilter::getSource() const
{
    return m_source;
}

bool WFilter::isPropertyMatch(const QSharedPointer<ValueFilter> &filter, QString &errorText) const
{
    if (!filter)
        return false;
    if (filter->getValueId() != m_columnId) {
        errorText = tr("attempt to set filter for value '%1' to widget for column '%2'")
                        .arg(filter->getValueId(), m_columnId);
        return false;
    }
    if (m_source == filter->getSource())
        return true;
    errorText = tr("attempt to set filter for value '%1' source %2 to widget for source '%3'")
                    .arg(filter->getValueId(), QString::number(static_cast<int>(filter->getSource())),
                         QString::number(static_cast<int>(m_source)));
    return false;
}
