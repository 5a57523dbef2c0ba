#pragma once

#include "FilterGridViewConfiguration.h"
#include "alarmmodel_export.h"

#include <QByteArray>
#include <QString>

// The configuration of a filter statistics view, parsed from the JSON text of
// a filter set (format in docs/alarms.md). After a failed parse the error
// text says why; when it is already a whole message (a JSON syntax error,
// which names its position) the flag says so, otherwise the text names the
// faulty field and the caller puts it into its own message.
class ALARMMODEL_EXPORT FilterViewConfiguration
{
public:
    enum ViewType : int { NoView = 0, Grid = 1, Tree = 2 };

    bool parse(const QString &json, const WildcardConfig &wildcards = WildcardConfig());
    void reset();

    ViewType getViewType() const { return m_viewType; }
    const FilterGridViewConfiguration &getGridConfig() const { return m_grid; }
    QString getErrorText() const { return m_errorText; }
    bool isErrorFullMessage() const { return m_errorIsFullMessage; }

private:
    ViewType m_viewType = NoView;
    FilterGridViewConfiguration m_grid;
    QString m_errorText;
    bool m_errorIsFullMessage = false;
};
