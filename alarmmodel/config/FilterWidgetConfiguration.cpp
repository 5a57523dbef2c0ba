#include "FilterWidgetConfiguration.h"

#include "JsonFieldReader.h"

#include <QJsonArray>

bool FilterWidgetConfiguration::operator==(const FilterWidgetConfiguration &other) const
{
    return m_panelPluginName == other.m_panelPluginName && m_ctrlLibrary == other.m_ctrlLibrary &&
           m_masterFunction == other.m_masterFunction && m_slaveFunction == other.m_slaveFunction &&
           m_fixedCompletions == other.m_fixedCompletions && m_noPanel == other.m_noPanel;
}

QJsonObject FilterWidgetConfiguration::toJson() const
{
    QJsonObject fixed;
    for (auto it = m_fixedCompletions.begin(); it != m_fixedCompletions.end(); ++it)
        fixed.insert(it.key(), QJsonArray::fromStringList(it.value()));
    return QJsonObject{{QStringLiteral("panelPlugin"), m_panelPluginName},
                       {QStringLiteral("ctrlLibrary"), m_ctrlLibrary},
                       {QStringLiteral("masterFunction"), m_masterFunction},
                       {QStringLiteral("slaveFunction"), m_slaveFunction},
                       {QStringLiteral("fixedCompletions"), fixed},
                       {QStringLiteral("noPanel"), m_noPanel}};
}

bool FilterWidgetConfiguration::fromJson(const QJsonObject &object, const QString &path, QString &error)
{
    FilterWidgetConfiguration read;
    JsonFieldReader r(object, path, error);
    r.checkKnownKeys({QStringLiteral("panelPlugin"), QStringLiteral("ctrlLibrary"), QStringLiteral("masterFunction"),
                      QStringLiteral("slaveFunction"), QStringLiteral("fixedCompletions"), QStringLiteral("noPanel")});
    r.readString(QStringLiteral("panelPlugin"), read.m_panelPluginName);
    r.readString(QStringLiteral("ctrlLibrary"), read.m_ctrlLibrary);
    r.readString(QStringLiteral("masterFunction"), read.m_masterFunction);
    r.readString(QStringLiteral("slaveFunction"), read.m_slaveFunction);
    r.readStringListMap(QStringLiteral("fixedCompletions"), read.m_fixedCompletions);
    r.readBool(QStringLiteral("noPanel"), read.m_noPanel);
    if (!r.ok())
        return false;
    *this = read;
    return true;
}
