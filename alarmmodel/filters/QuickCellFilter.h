#pragma once

#include "TextMatcher.h"
#include "WildcardConfig.h"
#include "alarmmodel_export.h"

#include <QMetaType>
#include <QString>

// The one-line filter above the alarm table, matched against cell texts.
//
// Modes: 0 the string literally, 1 a wildcard pattern ("*", "?", "\" escapes),
// 2 a regular expression. Without "match full column" the pattern may match any
// part of a cell; with it, the whole cell. An empty string, or the match-all
// character alone in wildcard mode, matches every cell (the filter is empty).
// A cell on which a regular expression backtracks beyond the expression
// engine's limits is shown, and the first such cell is logged.
class ALARMMODEL_EXPORT QuickCellFilter
{
public:
    enum Mode : int { ModeLiteral = 0, ModeWildcard = 1, ModeRegularExpression = 2 };

    // Empty, wildcard mode, case-insensitive, partial match.
    QuickCellFilter();

    QString getString() const { return m_string; }
    // Returns false when the pattern is invalid in the current mode (an invalid
    // regular expression); the string is stored anyway, and the filter then
    // matches no cell until it becomes valid.
    bool setString(const QString &string);

    int getMode() const { return m_mode; }
    // Unknown modes are taken as wildcard mode. Returns whether the string is
    // valid in the new mode.
    bool setMode(int mode);

    bool isMatchCase() const { return m_matchCase; }
    void setMatchCase(bool matchCase);
    bool isMatchFullColumn() const { return m_matchFullColumn; }
    void setMatchFullColumn(bool matchFullColumn);

    const WildcardConfig &getWildCardConfig() const { return m_wildcardConfig; }
    void setWildCardConfig(const WildcardConfig &config);

    bool isValid() const { return m_valid; }
    bool isEmpty() const;
    bool matches(const QString &cellText) const;

    // String, mode, case and full-column flags (not the wildcard configuration).
    bool operator==(const QuickCellFilter &other) const;
    bool operator!=(const QuickCellFilter &other) const { return !(*this == other); }

private:
    bool compile();

    QString m_string;
    int m_mode = ModeWildcard;
    bool m_matchCase = false;
    bool m_matchFullColumn = false;
    bool m_valid = true;
    WildcardConfig m_wildcardConfig;
    TextMatcher m_matcher;
    mutable bool m_undecidedLogged = false;
};

Q_DECLARE_METATYPE(QuickCellFilter)
