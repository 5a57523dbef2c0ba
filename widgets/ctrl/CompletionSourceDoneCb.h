#pragma once

#include "DoneCB.h"
#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QPointer>
#include <QString>

class FilterCompletions;

// Carries the answer of one completion call back to the FilterCompletions
// that asked, if that still exists; an answer for one that is gone is dropped.
class WIDGETS_EXPORT CompletionSourceDoneCb : public DoneCB, public MsgLoggingProducer
{
public:
    CompletionSourceDoneCb(const MsgLoggingProducer *logger, FilterCompletions *completions,
                           void *consumer, const QString &function);
    CompletionSourceDoneCb(const CompletionSourceDoneCb &other) = default;
    ~CompletionSourceDoneCb() override;

    void execute(const Variable *result) override;
    DoneCB *clone() const override;

    const QString &getFunction() const { return m_function; }

private:
    QPointer<FilterCompletions> m_completions;
    void *m_consumer;
    QString m_function;
};
