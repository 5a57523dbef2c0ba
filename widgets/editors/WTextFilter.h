#pragma once

#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QLineEdit>

// A line edit whose clear button can announce itself, so that its user can tell
// clearing apart from typing.
class WIDGETS_EXPORT WTextFilter : public QLineEdit, public MsgLoggingProducer
{
    Q_OBJECT
public:
    explicit WTextFilter(QWidget *parent = nullptr);
    explicit WTextFilter(const MsgLoggingProducer *logger, QWidget *parent = nullptr);

    // Shows the clear button and makes it emit textCleared(); connects once
    // however often it is called.
    void enableClearButtonSignal();

signals:
    void textCleared();

private:
    bool m_clearConnected = false;
};
