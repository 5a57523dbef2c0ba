#include "FilterViewConfiguration.h"

#include "JsonFieldReader.h"

bool FilterViewConfiguration::parse(const QString &json, const WildcardConfig &wildcards)
{
    reset();
    QJsonObject root;
    QString error;
    if (!JsonFieldReader::parseObject(json.toUtf8(), root, error)) {
        m_errorText = QStringLiteral("Filter set JSON is not valid: ") + error;
        m_errorIsFullMessage = true;
        return false;
    }
    JsonFieldReader reader(root, QString(), error);
    QString view = QStringLiteral("grid");
    QJsonObject grid;
    reader.checkKnownKeys({QStringLiteral("view"), QStringLiteral("grid")});
    reader.readString(QStringLiteral("view"), view);
    if (reader.ok() && view != QLatin1String("grid") && view != QLatin1String("tree"))
        reader.fail(QStringLiteral("view must be \"grid\" or \"tree\", not \"%1\"").arg(view));
    reader.readObject(QStringLiteral("grid"), grid, view == QLatin1String("grid"));
    FilterGridViewConfiguration gridConfig;
    if (reader.ok() && view == QLatin1String("grid"))
        gridConfig.fromJson(grid, reader.fieldPath(QStringLiteral("grid")), wildcards, error);
    if (!reader.ok() || !error.isEmpty()) {
        m_errorText = error;
        return false;
    }
    m_viewType = view == QLatin1String("grid") ? Grid : Tree;
    m_grid = gridConfig;
    return true;
}

void FilterViewConfiguration::reset()
{
    *this = FilterViewConfiguration();
}
