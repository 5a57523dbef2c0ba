#include "ValueFilter.h"

#include "JsonFieldReader.h"
#include "ValueFilterDate.h"
#include "ValueFilterFixed.h"
#include "ValueFilterFixedMulti.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterSingleValue.h"
#include "ValueFilterStringPattern.h"
#include "ValueFilterText.h"

#include <QDateTime>

namespace {
const char *const kindKeys[] = {"stringPattern", "text", "numbers", "date", "singleValue", "fixed", "fixedMulti"};
constexpr int kindCount = int(sizeof(kindKeys) / sizeof(kindKeys[0]));
} // namespace

ValueFilter::ValueFilter(const WildcardConfig &config, const QString &valueId, Constants::ValueSource source,
                         bool matchCase)
    : m_filterWildcards(config), m_valueId(valueId), m_source(source), m_matchCase(matchCase)
{
}

ValueFilter::~ValueFilter() = default;

void ValueFilter::setWildcardConfig(const WildcardConfig &config)
{
    m_filterWildcards = config;
}

void ValueFilter::setMatchCase(bool matchCase)
{
    m_matchCase = matchCase;
}

QString ValueFilter::toString() const
{
    // One pass: a chained arg() would read a "%1" in the property name or
    // the content as a place to fill.
    return QStringLiteral("%1 (source %2%3): %4")
        .arg(m_valueId, QString::number(int(m_source)),
             m_matchCase ? QStringLiteral(", match case") : QString(), describeContent());
}

bool ValueFilter::isEqual(const ValueFilter &other) const
{
    return getKind() == other.getKind() && m_valueId == other.m_valueId && m_source == other.m_source &&
           m_matchCase == other.m_matchCase && isContentEqual(other);
}

bool ValueFilter::valuesEqual(const QVariant &a, const QVariant &b, Qt::CaseSensitivity cs)
{
    if (!a.isValid() || !b.isValid())
        return a.isValid() == b.isValid();
    if (a.userType() == QMetaType::QString || b.userType() == QMetaType::QString)
        return a.toString().compare(b.toString(), cs) == 0;
    return a == b;
}

QString ValueFilter::kindKey(Kind kind)
{
    return int(kind) >= 0 && int(kind) < kindCount ? QString::fromLatin1(kindKeys[kind]) : QString();
}

bool ValueFilter::kindFromKey(const QString &key, Kind &kind)
{
    for (int i = 0; i < kindCount; ++i) {
        if (key == QLatin1String(kindKeys[i])) {
            kind = Kind(i);
            return true;
        }
    }
    return false;
}

QStringList ValueFilter::commonKeys()
{
    return {QStringLiteral("kind"), QStringLiteral("valueId"), QStringLiteral("source"),
            QStringLiteral("matchCase")};
}

QJsonObject ValueFilter::toJson() const
{
    QJsonObject object{{QStringLiteral("kind"), kindKey(getKind())},
                       {QStringLiteral("valueId"), m_valueId},
                       {QStringLiteral("source"), Constants::valueSourceKey(m_source)},
                       {QStringLiteral("matchCase"), m_matchCase}};
    writeContent(object);
    return object;
}

QSharedPointer<ValueFilter> ValueFilter::fromJson(const QJsonObject &object, const WildcardConfig &config,
                                                  const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    QString kindText, valueId, sourceText;
    bool matchCase = false;
    r.readString(QStringLiteral("kind"), kindText, true);
    r.readString(QStringLiteral("valueId"), valueId, true);
    r.readString(QStringLiteral("source"), sourceText, true);
    r.readBool(QStringLiteral("matchCase"), matchCase);
    Kind kind = StringPatternKind;
    Constants::ValueSource source = Constants::ValueSourceAlarm;
    if (r.ok() && !kindFromKey(kindText, kind))
        r.fail(QStringLiteral("'%1' is an unknown filter kind '%2'").arg(r.fieldPath(QStringLiteral("kind")), kindText));
    if (r.ok() && !Constants::valueSourceFromKey(sourceText, source))
        r.fail(QStringLiteral("'%1' is an unknown value source '%2'")
                   .arg(r.fieldPath(QStringLiteral("source")), sourceText));
    if (!r.ok())
        return nullptr;

    QSharedPointer<ValueFilter> filter;
    switch (kind) {
    case StringPatternKind:
        filter.reset(new ValueFilterStringPattern(config, valueId, source, matchCase));
        break;
    case TextKind:
        filter.reset(new ValueFilterText(config, valueId, source, matchCase));
        break;
    case NumbersKind:
        filter.reset(new ValueFilterNumbers(config, valueId, source, matchCase));
        break;
    case DateKind:
        filter.reset(new ValueFilterDate(config, valueId, source, matchCase));
        break;
    case SingleValueKind:
        filter.reset(new ValueFilterSingleValue(config, valueId, source, matchCase));
        break;
    case FixedKind:
        filter.reset(new ValueFilterFixed(config, valueId, source, matchCase));
        break;
    case FixedMultiKind:
        filter.reset(new ValueFilterFixedMulti(config, valueId, source, matchCase));
        break;
    }
    if (!filter->readContent(object, path, error))
        return nullptr;
    return filter;
}
