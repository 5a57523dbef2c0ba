#include "SourceAndFilter.h"

#include "JsonFieldReader.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

namespace {
void registerSourceAndFilter()
{
    qRegisterMetaType<SourceAndFilter>("SourceAndFilter");
}
Q_CONSTRUCTOR_FUNCTION(registerSourceAndFilter)

} // namespace

const char *const SourceAndFilter::FileFormat = "AlarmScreen.SourceAndFilter";

SourceAndFilter::SourceAndFilter() : SourceAndFilter(nullptr) {}

SourceAndFilter::SourceAndFilter(const MsgLoggingProducer *logger)
    : MsgLoggingProducer(logger), m_timeRange(logger)
{
}

SourceAndFilter::~SourceAndFilter() = default;

bool SourceAndFilter::isEmpty() const
{
    return !m_filter || m_filter->isEmpty();
}

bool SourceAndFilter::isFilterEqual(const SourceAndFilter &other) const
{
    const bool noSets = !m_filter || m_filter->getRuleSets().isEmpty();
    const bool otherNoSets = !other.m_filter || other.m_filter->getRuleSets().isEmpty();
    if (noSets || otherNoSets)
        return noSets == otherNoSets;
    return m_filter->isEqual(*other.m_filter);
}

bool SourceAndFilter::isEqual(const SourceAndFilter &other) const
{
    return isFilterEqual(other) && m_sourceMode == other.m_sourceMode && m_timeRange == other.m_timeRange &&
           m_systems == other.m_systems && m_dpNames == other.m_dpNames &&
           m_selectionKind == other.m_selectionKind;
}

bool SourceAndFilter::matches(const FilterValueProvider &values) const
{
    return !m_filter || m_filter->matches(values);
}

QJsonObject SourceAndFilter::toJson() const
{
    return QJsonObject{
        {QStringLiteral("format"), QLatin1String(FileFormat)},
        {QStringLiteral("version"), FileVersion},
        {QStringLiteral("sourceMode"), Constants::sourceModeKey(m_sourceMode)},
        {QStringLiteral("timeRange"), m_timeRange.toJson()},
        {QStringLiteral("systems"), QJsonArray::fromStringList(m_systems)},
        {QStringLiteral("dpNames"), QJsonArray::fromStringList(m_dpNames)},
        {QStringLiteral("selectionKind"), m_selectionKind},
        {QStringLiteral("filter"), m_filter ? QJsonValue(m_filter->toJson()) : QJsonValue(QJsonValue::Null)}};
}

QByteArray SourceAndFilter::toJsonText() const
{
    return QJsonDocument(toJson()).toJson(QJsonDocument::Indented);
}

bool SourceAndFilter::fromJson(const QJsonObject &object, QString &error, const WildcardConfig *config)
{
    SourceAndFilter read(this); // absent fields take their defaults, not the current values
    JsonFieldReader r(object, QString(), error);
    QString format, modeText = Constants::sourceModeKey(read.m_sourceMode);
    int version = 0;
    QJsonObject rangeObject;
    r.checkKnownKeys({QStringLiteral("format"), QStringLiteral("version"), QStringLiteral("sourceMode"),
                      QStringLiteral("timeRange"), QStringLiteral("systems"), QStringLiteral("dpNames"),
                      QStringLiteral("selectionKind"), QStringLiteral("filter")});
    r.readString(QStringLiteral("format"), format, true);
    if (r.ok() && format != QLatin1String(FileFormat))
        return r.fail(QStringLiteral("not a saved filter: 'format' is '%1', expected '%2'")
                          .arg(format, QLatin1String(FileFormat)));
    r.readInt(QStringLiteral("version"), version, true);
    if (r.ok() && (version < 1 || version > FileVersion))
        return r.fail(QStringLiteral("unsupported filter file version %1 (this program reads up to %2)")
                          .arg(version)
                          .arg(FileVersion));
    r.readString(QStringLiteral("sourceMode"), modeText);
    r.readObject(QStringLiteral("timeRange"), rangeObject);
    r.readStringList(QStringLiteral("systems"), read.m_systems);
    r.readStringList(QStringLiteral("dpNames"), read.m_dpNames);
    r.readInt(QStringLiteral("selectionKind"), read.m_selectionKind);
    if (!r.ok())
        return false;
    if (!Constants::sourceModeFromKey(modeText, read.m_sourceMode))
        return r.fail(QStringLiteral("'sourceMode' is an unknown source mode '%1'").arg(modeText));
    if (read.m_selectionKind != SelectBySystems && read.m_selectionKind != SelectByDpNames)
        return r.fail(QStringLiteral("'selectionKind' must be 0 (systems) or 1 (datapoint names)"));
    if (r.has(QStringLiteral("timeRange")) && !read.m_timeRange.fromJson(rangeObject, QStringLiteral("timeRange"), error))
        return false;

    const QJsonValue filterValue = object.value(QStringLiteral("filter"));
    read.m_filter.reset();
    if (filterValue.isObject()) {
        const WildcardConfig rules = config ? *config : WildcardConfig(this);
        auto container = QSharedPointer<FilterRuleContainer>::create(rules);
        if (!container->fromJson(filterValue.toObject(), rules, QStringLiteral("filter"), error))
            return false;
        read.m_filter = container;
    } else if (!filterValue.isNull() && !filterValue.isUndefined()) {
        return r.fail(QStringLiteral("'filter' must be an object or null"));
    }
    *this = read;
    return true;
}

bool SourceAndFilter::fromJsonText(const QByteArray &text, QString &error, const WildcardConfig *config)
{
    QJsonObject object;
    return JsonFieldReader::parseObject(text, object, error) && fromJson(object, error, config);
}

bool SourceAndFilter::saveToFile(const QString &fileName, QString &error) const
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        error = QStringLiteral("cannot write '%1': %2").arg(fileName, file.errorString());
        return false;
    }
    file.write(toJsonText());
    if (!file.commit()) {
        error = QStringLiteral("cannot write '%1': %2").arg(fileName, file.errorString());
        return false;
    }
    return true;
}

bool SourceAndFilter::loadFromFile(const QString &fileName, QString &error, const WildcardConfig *config)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("cannot read '%1': %2").arg(fileName, file.errorString());
        return false;
    }
    if (!fromJsonText(file.readAll(), error, config)) {
        error = QStringLiteral("'%1': %2").arg(fileName, error);
        return false;
    }
    return true;
}
