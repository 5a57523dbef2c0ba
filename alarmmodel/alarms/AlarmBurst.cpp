#include "AlarmBurst.h"

void AlarmBurst::upsert(const AlarmInstancePtr &alarm)
{
    if (alarm)
        m_operations.append({alarm, alarm->getIdent()});
}

void AlarmBurst::remove(const AlarmIdent &ident)
{
    m_operations.append({AlarmInstancePtr(), ident});
}
