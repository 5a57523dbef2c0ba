#include "WildcardConfig.h"

#include "JsonFieldReader.h"

WildcardConfig::WildcardConfig() = default;

WildcardConfig::WildcardConfig(const MsgLoggingProducer *logger) : MsgLoggingProducer(logger) {}

WildcardConfig::WildcardConfig(const MsgLoggingProducer *logger, QChar matchAllChar, QChar emptyPatternChar)
    : MsgLoggingProducer(logger), m_matchAllChar(matchAllChar), m_emptyPatternChar(emptyPatternChar)
{
}

WildcardConfig::~WildcardConfig() = default;

QString WildcardConfig::getMatchAllString() const
{
    return isMatchAllCharSet() ? QString(m_matchAllChar) : QString();
}

bool WildcardConfig::operator==(const WildcardConfig &other) const
{
    return m_matchAllChar == other.m_matchAllChar && m_emptyPatternChar == other.m_emptyPatternChar;
}

QJsonObject WildcardConfig::toJson() const
{
    return QJsonObject{{QStringLiteral("matchAll"), getMatchAllString()},
                       {QStringLiteral("emptyPattern"),
                        isEmptyPatternCharSet() ? QString(m_emptyPatternChar) : QString()}};
}

bool WildcardConfig::fromJson(const QJsonObject &object, const QString &path, QString &error)
{
    QChar matchAll = m_matchAllChar;
    QChar emptyPattern = m_emptyPatternChar;
    JsonFieldReader r(object, path, error);
    r.checkKnownKeys({QStringLiteral("matchAll"), QStringLiteral("emptyPattern")});
    r.readChar(QStringLiteral("matchAll"), matchAll);
    r.readChar(QStringLiteral("emptyPattern"), emptyPattern);
    if (r.ok() && !matchAll.isNull() && matchAll == emptyPattern)
        r.fail(QStringLiteral("'%1' and '%2' must differ")
                   .arg(r.fieldPath(QStringLiteral("matchAll")), r.fieldPath(QStringLiteral("emptyPattern"))));
    if (!r.ok())
        return false;
    m_matchAllChar = matchAll;
    m_emptyPatternChar = emptyPattern;
    return true;
}
