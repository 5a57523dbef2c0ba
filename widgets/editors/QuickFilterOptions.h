#pragma once

#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QFrame>
#include <QScopedPointer>

class QuickCellFilter;
namespace Ui {
class QuickFilterOptions;
}

// The popup in which the operator chooses how the quick filter's pattern is read
// and matched.
class WIDGETS_EXPORT QuickFilterOptions : public QFrame, public MsgLoggingProducer
{
    Q_OBJECT
public:
    QuickFilterOptions(const MsgLoggingProducer *logger, QWidget *parent);
    ~QuickFilterOptions() override;

    // Shows the options of `filter` without announcing a change of mode.
    void setFilterOptions(const QuickCellFilter &filter);

signals:
    void matchCaseChanged(int checkState);
    void matchFullColumnChanged(int checkState);
    void modeChanged(int mode);

public slots:
    void modeToggeled(bool buttonChecked);

private:
    QScopedPointer<Ui::QuickFilterOptions> m_ui;
    int m_mode = 1;
};
