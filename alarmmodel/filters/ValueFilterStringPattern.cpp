#include "ValueFilterStringPattern.h"

#include "JsonFieldReader.h"

ValueFilterStringPattern::ValueFilterStringPattern(const WildcardConfig &config, const QString &valueId,
                                                   Constants::ValueSource source, bool matchCase)
    : ValueFilter(config, valueId, source, matchCase)
{
}

ValueFilterStringPattern::~ValueFilterStringPattern() = default;

QSharedPointer<ValueFilter> ValueFilterStringPattern::clone() const
{
    return QSharedPointer<ValueFilter>(new ValueFilterStringPattern(*this));
}

QStringList ValueFilterStringPattern::splitPatternList(const QString &text)
{
    QStringList parts;
    QString current;
    auto finishPart = [&]() {
        const QString part = current.trimmed();
        if (!part.isEmpty())
            parts << part;
        current.clear();
    };
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool isSeparator = c == QLatin1Char(';') || c == QLatin1Char(',');
        if (c == QLatin1Char('\\') && i + 1 < text.size()) {
            const QChar next = text.at(++i);
            if (next != QLatin1Char(';') && next != QLatin1Char(','))
                current += c;
            current += next;
        } else if (isSeparator) {
            finishPart();
        } else {
            current += c;
        }
    }
    finishPart();
    return parts;
}

void ValueFilterStringPattern::setFilterText(const QString &text)
{
    m_text = text;
    m_includedPatterns.clear();
    m_excludedPatterns.clear();
    for (const QString &part : splitPatternList(text)) {
        if (part.startsWith(QLatin1Char('!')))
            m_excludedPatterns << part.mid(1);
        else
            m_includedPatterns << part;
    }
    compile();
}

void ValueFilterStringPattern::setMatchCase(bool matchCase)
{
    if (matchCase == isMatchCase())
        return;
    ValueFilter::setMatchCase(matchCase);
    compile();
}

void ValueFilterStringPattern::compile()
{
    const WildcardConfig &config = getWildcardConfig();
    const Qt::CaseSensitivity cs = isMatchCase() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    auto compileList = [&](const QStringList &patterns, QVector<TextMatcher> &matchers) {
        matchers.clear();
        matchers.reserve(patterns.size());
        for (const QString &pattern : patterns) {
            TextMatcher m;
            if (config.isEmptyPatternCharSet() && pattern == QString(config.getEmptyPatternChar()))
                m.setPattern(QString(), TextMatcher::Exact, cs, true);
            else if (!(config.isMatchAllCharSet() && pattern == config.getMatchAllString()))
                m.setPattern(pattern, TextMatcher::Wildcard, cs, true);
            // else: the default matcher matches everything
            matchers << m;
        }
    };
    compileList(m_includedPatterns, m_includes);
    compileList(m_excludedPatterns, m_excludes);
    m_includesAll = false;
    for (const TextMatcher &m : qAsConst(m_includes))
        m_includesAll = m_includesAll || m.matchesEverything();
}

bool ValueFilterStringPattern::isEmpty() const
{
    return (m_includes.isEmpty() || m_includesAll) && m_excludes.isEmpty();
}

QString ValueFilterStringPattern::describeContent() const
{
    return QStringLiteral("pattern '%1'").arg(m_text);
}

bool ValueFilterStringPattern::matches(const QVariant &value) const
{
    return matchesText(value.toString());
}

bool ValueFilterStringPattern::isContentEqual(const ValueFilter &other) const
{
    const auto &o = static_cast<const ValueFilterStringPattern &>(other);
    return m_includedPatterns == o.m_includedPatterns && m_excludedPatterns == o.m_excludedPatterns;
}

void ValueFilterStringPattern::writeContent(QJsonObject &object) const
{
    object.insert(QStringLiteral("text"), m_text);
}

bool ValueFilterStringPattern::readContent(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    QString text;
    r.checkKnownKeys(commonKeys() << QStringLiteral("text"));
    if (!r.readString(QStringLiteral("text"), text, true))
        return false;
    setFilterText(text);
    return true;
}
