#pragma once

#include "MsgLoggingProducer.h"
#include "alarmmodel_export.h"

#include <QHash>
#include <QStringList>

// Counts how many users show each colour name, so that whoever animates
// colours only announces those somebody shows. A counter may pass its counts
// on to a final target (a component's own counter forwards to the colour
// engine's): the target then sees every name this counter uses.
class ALARMMODEL_EXPORT ColorUsageCounter : public MsgLoggingProducer
{
public:
    explicit ColorUsageCounter(const MsgLoggingProducer *logger = nullptr);
    ColorUsageCounter(const ColorUsageCounter &) = delete;
    ColorUsageCounter &operator=(const ColorUsageCounter &) = delete;
    // Gives back to the final target what this counter still holds.
    ~ColorUsageCounter() override;

    // Moves the counts held from the old target (if any) to the new one; a
    // target that is this counter itself is refused.
    virtual void setFinalTarget(ColorUsageCounter *target);
    virtual void incrementColorUsage(const QString &name);
    // Decrementing a name that is not in use is logged and ignored.
    virtual void decrementColorUsage(const QString &name);
    // True while the name was incremented more often than decremented.
    virtual bool isColorUsed(const QString &name) const;
    // The names in use, sorted.
    virtual QStringList getColors() const;

    ColorUsageCounter *getFinalTarget() const { return m_target; }
    int getUsageCount(const QString &name) const { return m_counts.value(name); }

private:
    void transferAll(ColorUsageCounter *target, bool increment) const;

    QHash<QString, int> m_counts;
    ColorUsageCounter *m_target = nullptr;
};
