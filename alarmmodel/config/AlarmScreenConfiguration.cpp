#include "AlarmScreenConfiguration.h"

#include "JsonFieldReader.h"

#include <QFile>
#include <QJsonArray>

namespace {
const QStringList &knownSections()
{
    static const QStringList keys{QStringLiteral("format"),       QStringLiteral("version"),
                                  QStringLiteral("wildcards"),    QStringLiteral("filterWidget"),
                                  QStringLiteral("mouseProcessor"), QStringLiteral("grouping"),
                                  QStringLiteral("columns")};
    return keys;
}
} // namespace

const char *const AlarmScreenConfiguration::FileFormat = "AlarmScreen.Configuration";

AlarmScreenConfiguration::AlarmScreenConfiguration() : AlarmScreenConfiguration(nullptr) {}

AlarmScreenConfiguration::AlarmScreenConfiguration(const MsgLoggingProducer *logger)
    : MsgLoggingProducer(logger), m_wildcardConfig(logger), m_groupingConfig(logger, QString())
{
}

AlarmScreenConfiguration::~AlarmScreenConfiguration() = default;

WildcardConfig AlarmScreenConfiguration::getWildcardConfig() const
{
    WildcardConfig config(m_wildcardConfig);
    config.copyLogSettings(this);
    return config;
}

QJsonObject AlarmScreenConfiguration::getSection(const QString &name) const
{
    return m_otherSections.value(name).toObject();
}

QStringList AlarmScreenConfiguration::getSectionNames() const
{
    return m_otherSections.keys();
}

QJsonObject AlarmScreenConfiguration::toJson() const
{
    QJsonObject object = m_otherSections;
    QJsonArray columns;
    for (const ColumnDefinition &column : m_columns)
        columns << column.toJson();
    object.insert(QStringLiteral("format"), QLatin1String(FileFormat));
    object.insert(QStringLiteral("version"), FileVersion);
    object.insert(QStringLiteral("wildcards"), m_wildcardConfig.toJson());
    object.insert(QStringLiteral("filterWidget"), m_filterWidgetConfig.toJson());
    object.insert(QStringLiteral("mouseProcessor"), m_mouseProcessorConfig.toJson());
    object.insert(QStringLiteral("grouping"), m_groupingConfig.toJson());
    object.insert(QStringLiteral("columns"), columns);
    return object;
}

bool AlarmScreenConfiguration::fromJson(const QJsonObject &object, QString &error)
{
    AlarmScreenConfiguration read(*this);
    JsonFieldReader r(object, QString(), error);
    QString format;
    int version = 0;
    r.readString(QStringLiteral("format"), format, true);
    if (r.ok() && format != QLatin1String(FileFormat))
        return r.fail(QStringLiteral("not an alarm screen configuration: 'format' is '%1', expected '%2'")
                          .arg(format, QLatin1String(FileFormat)));
    r.readInt(QStringLiteral("version"), version, true);
    if (r.ok() && (version < 1 || version > FileVersion))
        return r.fail(QStringLiteral("unsupported configuration version %1 (this program reads up to %2)")
                          .arg(version)
                          .arg(FileVersion));

    // Each section starts from its defaults: a section left out of the file is
    // not inherited from an earlier load.
    read.m_wildcardConfig = WildcardConfig(this);
    read.m_filterWidgetConfig = FilterWidgetConfiguration();
    read.m_mouseProcessorConfig = MouseProcessorConfiguration();
    read.m_groupingConfig = GroupingConfiguration(this, QString());
    read.m_columns.clear();

    QJsonObject section;
    if (r.readObject(QStringLiteral("wildcards"), section) && r.has(QStringLiteral("wildcards")) &&
        !read.m_wildcardConfig.fromJson(section, QStringLiteral("wildcards"), error))
        return false;
    section = QJsonObject();
    if (r.readObject(QStringLiteral("filterWidget"), section) && r.has(QStringLiteral("filterWidget")) &&
        !read.m_filterWidgetConfig.fromJson(section, QStringLiteral("filterWidget"), error))
        return false;
    section = QJsonObject();
    if (r.readObject(QStringLiteral("mouseProcessor"), section) && r.has(QStringLiteral("mouseProcessor")) &&
        !read.m_mouseProcessorConfig.fromJson(section, QStringLiteral("mouseProcessor"), error))
        return false;
    section = QJsonObject();
    if (r.readObject(QStringLiteral("grouping"), section) && r.has(QStringLiteral("grouping")) &&
        !read.m_groupingConfig.fromJson(section, QStringLiteral("grouping"), error))
        return false;
    QJsonArray columns;
    if (!r.readArray(QStringLiteral("columns"), columns))
        return false;
    for (int i = 0; i < columns.size(); ++i) {
        const QString path = QStringLiteral("columns[%1]").arg(i);
        if (!columns.at(i).isObject())
            return r.fail(QStringLiteral("'%1' must be an object").arg(path));
        ColumnDefinition column;
        if (!column.fromJson(columns.at(i).toObject(), path, error))
            return false;
        for (const ColumnDefinition &earlier : qAsConst(read.m_columns)) {
            if (earlier.getId() == column.getId() && earlier.getSource() == column.getSource())
                return r.fail(QStringLiteral("'%1': column '%2' is defined twice").arg(path, column.getId()));
        }
        read.m_columns << column;
    }
    if (!r.ok())
        return false;

    read.m_otherSections = QJsonObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (!knownSections().contains(it.key()))
            read.m_otherSections.insert(it.key(), it.value());
    }
    *this = read;
    return true;
}

bool AlarmScreenConfiguration::fromJsonText(const QByteArray &text, QString &error)
{
    QJsonObject object;
    return JsonFieldReader::parseObject(text, object, error) && fromJson(object, error);
}

bool AlarmScreenConfiguration::loadFromFile(const QString &fileName, QString &error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("cannot read configuration '%1': %2").arg(fileName, file.errorString());
        return false;
    }
    if (!fromJsonText(file.readAll(), error)) {
        error = QStringLiteral("configuration '%1': %2").arg(fileName, error);
        return false;
    }
    return true;
}
