#include "SourceStateStyle.h"

#include <QLabel>

bool SourceStateStyle::isMeasuredState(Constants::SourceState state)
{
    return state == Constants::QueryStarting || state == Constants::QueryRunning;
}

QColor SourceStateStyle::findStateColor(Constants::SourceState state)
{
    switch (state) {
    case Constants::SourceConnecting:
    case Constants::SourceLoading:
    case Constants::QueryStarting:
    case Constants::QueryRunning:
        return QColor(255, 255, 192, 255);
    case Constants::SourceDisconnected:
    case Constants::QueryFailed:
        return QColor(255, 192, 192, 255);
    default:
        return QColor();
    }
}

void SourceStateStyle::showState(QLabel *label, Constants::SourceState state)
{
    label->setText(Constants::getSourceStateVisibleName(state));
    const QColor color = findStateColor(state);
    if (color.isValid()) {
        QPalette palette = label->palette();
        palette.setColor(QPalette::Window, color);
        label->setPalette(palette);
        label->setAutoFillBackground(true);
    } else {
        label->setAutoFillBackground(false);
    }
}

QString SourceStateStyle::elapsedText(const QDateTime &start, const QDateTime &now)
{
    // A clock set back while a query runs must not show negative times.
    const qint64 seconds = qMax<qint64>(0, start.secsTo(now));
    const QChar zero(QLatin1Char('0'));
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600, 2, 10, zero)
        .arg((seconds % 3600) / 60, 2, 10, zero)
        .arg(seconds % 60, 2, 10, zero);
}
