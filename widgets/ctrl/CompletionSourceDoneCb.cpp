#include "CompletionSourceDoneCb.h"

#include "FilterCompletions.h"

CompletionSourceDoneCb::CompletionSourceDoneCb(const MsgLoggingProducer *logger,
                                               FilterCompletions *completions, void *consumer,
                                               const QString &function)
    : MsgLoggingProducer(logger), m_completions(completions), m_consumer(consumer),
      m_function(function)
{
}

CompletionSourceDoneCb::~CompletionSourceDoneCb() = default;

void CompletionSourceDoneCb::execute(const Variable *result)
{
    if (m_completions)
        m_completions->applyCtrlCallReturnValue(m_consumer, result);
}

DoneCB *CompletionSourceDoneCb::clone() const
{
    return new CompletionSourceDoneCb(*this);
}
