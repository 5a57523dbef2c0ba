#pragma once

#include "PopupFrame.h"
#include "TimeRange.h"
#include "widgets_export.h"

#include <QScopedPointer>

namespace Ui {
class TimeRangeEditor;
}

// Pop-up in which the operator sets the time range of a history query: the range
// type, the count for types that take one, and start and end of a custom interval.
// Every change is reported with the whole range.
class WIDGETS_EXPORT TimeRangeEditor : public PopupFrame
{
    Q_OBJECT
public:
    TimeRangeEditor(const TimeRange &range, QWidget *parent = nullptr);
    ~TimeRangeEditor() override;

    const TimeRange &getTimeRange() const { return m_range; }
    // Replaces the edited range (the owner changed it, e.g. for a requested
    // history query); no "changed" is emitted.
    void setTimeRange(const TimeRange &range);
    void setTimeSpec(Qt::TimeSpec timeSpec);

signals:
    void changed(const TimeRange &range);

public slots:
    void typeSelected(const QString &text);
    void spinValueChanged(int value);
    void startTimeChanged(const QDateTime &time);
    void endTimeChanged(const QDateTime &time);
    void nowButtonClicked();
    void displayTimeRange(bool forced);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QScopedPointer<Ui::TimeRangeEditor> m_ui;
    TimeRange m_range;
};
