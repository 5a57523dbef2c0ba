#pragma once

#include "Constants.h"
#include "PopupFrame.h"
#include "widgets_export.h"

#include <QDateTime>
#include <QScopedPointer>
#include <QTimer>

namespace Ui {
class QueryStateDisplay;
}

// Pop-up variant of the source state display: state, counts, the time spent on
// the running history query and a button to abort it.
class WIDGETS_EXPORT QueryStateDisplay : public PopupFrame
{
    Q_OBJECT
public:
    explicit QueryStateDisplay(QWidget *parent = nullptr);
    ~QueryStateDisplay() override;

    Constants::SourceState getState() const { return m_state; }

public slots:
    void displaySourceState(Constants::SourceState state);
    void displaySourceCounts(unsigned int totalRead, unsigned int matching);
    void stateTimerTick();

signals:
    void abortQuery();

protected:
    QScopedPointer<Ui::QueryStateDisplay> m_ui;
    Constants::SourceState m_state = Constants::SourceNoQuery;
    QDateTime m_queryStart;
    QTimer m_stateTimer;
};
