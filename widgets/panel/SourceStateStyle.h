#pragma once

#include "Constants.h"
#include "widgets_export.h"

#include <QColor>
#include <QDateTime>
#include <QString>

class QLabel;

// How the state of the alarm source is shown, shared by the source selector and
// the query state pop-up so that both look and count alike.
class WIDGETS_EXPORT SourceStateStyle
{
public:
    SourceStateStyle() = delete;

    // States of a running history query, whose elapsed time is measured.
    static bool isMeasuredState(Constants::SourceState state);
    // Background of the state label; invalid for states shown without colour.
    static QColor findStateColor(Constants::SourceState state);
    // Puts the state's visible name on `label` and fills its background with the
    // state colour (or stops filling it).
    static void showState(QLabel *label, Constants::SourceState state);
    // "hh:mm:ss" from `start` to `now`; hours are not wrapped at 24 and take as
    // many digits as they need.
    static QString elapsedText(const QDateTime &start, const QDateTime &now);
};
