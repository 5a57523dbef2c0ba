#include "ValueFilterNumbers.h"

#include "JsonFieldReader.h"

#include <QCoreApplication>

namespace {
const QRegularExpression &ruleExpression()
{
    static const QRegularExpression re(ValueFilterNumbers::rulePattern());
    return re;
}

QString number(double v)
{
    return QString::number(v, 'g', 15);
}

QString tr(const char *text)
{
    return QCoreApplication::translate("ValueFilterNumbers", text);
}
} // namespace

ValueFilterNumbers::ValueFilterNumbers(const WildcardConfig &config, const QString &valueId,
                                       Constants::ValueSource source, bool matchCase)
    : ValueFilter(config, valueId, source, matchCase)
{
}

ValueFilterNumbers::~ValueFilterNumbers() = default;

QSharedPointer<ValueFilter> ValueFilterNumbers::clone() const
{
    return QSharedPointer<ValueFilter>(new ValueFilterNumbers(*this));
}

QString ValueFilterNumbers::rulePattern()
{
    return QStringLiteral("^(!)?([><])?(-?[\\d\\.]+)(?:-(-?[\\d\\.]+))?$");
}

bool ValueFilterNumbers::Rule::operator==(const Rule &o) const
{
    return negated == o.negated && comparison == o.comparison && first == o.first && second == o.second;
}

bool ValueFilterNumbers::parseRule(const QString &part, Rule &rule)
{
    const QRegularExpressionMatch m = ruleExpression().match(part);
    if (!m.hasMatch())
        return false;
    bool ok = false;
    rule.negated = !m.captured(1).isEmpty();
    rule.first = m.captured(3).toDouble(&ok);
    if (!ok)
        return false;
    const QString op = m.captured(2);
    if (m.capturedLength(4) > 0) {
        if (!op.isEmpty())
            return false; // ">1-5" has no meaning
        rule.comparison = Range;
        rule.second = m.captured(4).toDouble(&ok);
        if (!ok)
            return false;
        if (rule.second < rule.first)
            std::swap(rule.first, rule.second);
    } else {
        rule.comparison = op.isEmpty() ? Equal : op == QLatin1String(">") ? Greater : Less;
    }
    return true;
}

bool ValueFilterNumbers::setFilterText(const QString &text)
{
    m_text = text;
    m_rules.clear();
    m_failedParts.clear();
    m_hasPlainRules = false;
    for (const QString &rawPart : text.split(QRegularExpression(QStringLiteral("[;,]")))) {
        QString part = rawPart;
        part.remove(QRegularExpression(QStringLiteral("\\s")));
        if (part.isEmpty())
            continue;
        Rule rule;
        if (parseRule(part, rule)) {
            m_rules << rule;
            m_hasPlainRules = m_hasPlainRules || !rule.negated;
        } else {
            m_failedParts << rawPart.trimmed();
        }
    }
    return m_failedParts.isEmpty();
}

QString ValueFilterNumbers::describeRule(const Rule &rule)
{
    QString text;
    switch (rule.comparison) {
    case Equal:
        text = tr("equal to %1").arg(number(rule.first));
        break;
    case Greater:
        text = tr("greater than %1").arg(number(rule.first));
        break;
    case Less:
        text = tr("less than %1").arg(number(rule.first));
        break;
    case Range:
        text = tr("between %1 and %2").arg(number(rule.first), number(rule.second));
        break;
    }
    return rule.negated ? tr("not %1").arg(text) : text;
}

QStringList ValueFilterNumbers::getRuleDescriptions() const
{
    QStringList descriptions;
    for (const Rule &rule : m_rules)
        descriptions << describeRule(rule);
    return descriptions;
}

QString ValueFilterNumbers::describeContent() const
{
    return QStringLiteral("numbers '%1'").arg(m_text);
}

bool ValueFilterNumbers::satisfies(const Rule &rule, double value)
{
    switch (rule.comparison) {
    case Equal:
        return value == rule.first;
    case Greater:
        return value > rule.first;
    case Less:
        return value < rule.first;
    case Range:
        return value >= rule.first && value <= rule.second;
    }
    return false;
}

bool ValueFilterNumbers::matches(const QVariant &value) const
{
    if (m_rules.isEmpty())
        return true;
    bool ok = false;
    const double v = value.toDouble(&ok);
    return ok && matchesNumber(v);
}

bool ValueFilterNumbers::matchesNumber(double v) const
{
    if (m_rules.isEmpty())
        return true;
    bool plainMatched = !m_hasPlainRules;
    for (const Rule &rule : m_rules) {
        if (rule.negated) {
            if (satisfies(rule, v))
                return false;
        } else if (!plainMatched) {
            plainMatched = satisfies(rule, v);
        }
    }
    return plainMatched;
}

bool ValueFilterNumbers::isContentEqual(const ValueFilter &other) const
{
    const auto &o = static_cast<const ValueFilterNumbers &>(other);
    return m_rules == o.m_rules && m_failedParts == o.m_failedParts;
}

void ValueFilterNumbers::writeContent(QJsonObject &object) const
{
    object.insert(QStringLiteral("text"), m_text);
}

bool ValueFilterNumbers::readContent(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    QString text;
    r.checkKnownKeys(commonKeys() << QStringLiteral("text"));
    if (!r.readString(QStringLiteral("text"), text, true))
        return false;
    ValueFilterNumbers parsed(*this);
    if (!parsed.setFilterText(text))
        return r.fail(QStringLiteral("'%1': cannot parse number rule(s) '%2'")
                          .arg(r.fieldPath(QStringLiteral("text")), parsed.m_failedParts.join(QStringLiteral("', '"))));
    *this = parsed;
    return true;
}
