#include "QuickCellFilter.h"

namespace {
void registerQuickCellFilter()
{
    qRegisterMetaType<QuickCellFilter>("QuickCellFilter");
}
Q_CONSTRUCTOR_FUNCTION(registerQuickCellFilter)
} // namespace

QuickCellFilter::QuickCellFilter() = default;

bool QuickCellFilter::compile()
{
    const Qt::CaseSensitivity cs = m_matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
    m_undecidedLogged = false;
    if (m_mode == ModeWildcard && m_wildcardConfig.isMatchAllCharSet() &&
        m_string == m_wildcardConfig.getMatchAllString()) {
        m_matcher = TextMatcher();
        m_valid = true;
    } else if (m_string.isEmpty()) {
        m_matcher = TextMatcher();
        m_valid = true;
    } else {
        m_valid = m_matcher.setPattern(m_string, TextMatcher::Method(m_mode), cs, m_matchFullColumn);
    }
    return m_valid;
}

bool QuickCellFilter::setString(const QString &string)
{
    m_string = string;
    return compile();
}

bool QuickCellFilter::setMode(int mode)
{
    m_mode = mode >= ModeLiteral && mode <= ModeRegularExpression ? mode : ModeWildcard;
    return compile();
}

void QuickCellFilter::setMatchCase(bool matchCase)
{
    m_matchCase = matchCase;
    compile();
}

void QuickCellFilter::setMatchFullColumn(bool matchFullColumn)
{
    m_matchFullColumn = matchFullColumn;
    compile();
}

void QuickCellFilter::setWildCardConfig(const WildcardConfig &config)
{
    m_wildcardConfig = config;
    compile();
}

bool QuickCellFilter::isEmpty() const
{
    return m_valid && m_matcher.matchesEverything();
}

bool QuickCellFilter::matches(const QString &cellText) const
{
    const TextMatcher::Answer answer = m_matcher.answer(cellText);
    if (answer != TextMatcher::Undecided)
        return answer == TextMatcher::Match;
    if (!m_undecidedLogged) {
        m_undecidedLogged = true;
        ASLOG(&m_wildcardConfig, MsgLoggerEnums::Warning,
              QStringLiteral("the quick filter '%1' backtracks beyond the expression engine's limits on a cell of "
                             "%2 characters; such cells are shown")
                  .arg(m_string, QString::number(cellText.size())));
    }
    return true;
}

bool QuickCellFilter::operator==(const QuickCellFilter &other) const
{
    return m_string == other.m_string && m_mode == other.m_mode && m_matchCase == other.m_matchCase &&
           m_matchFullColumn == other.m_matchFullColumn;
}
