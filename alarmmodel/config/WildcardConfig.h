#pragma once

#include "MsgLoggingProducer.h"
#include "alarmmodel_export.h"

#include <QChar>
#include <QJsonObject>

// The wildcard rules handed to every filter editor and filter value.
//
// The match-all character is a pattern that matches every value (usually "*").
// The empty-pattern character, when set, switches editors into "never empty"
// mode: an editor then shows the match-all character instead of nothing, and a
// pattern consisting of the empty-pattern character alone matches an empty value.
// Both are null when unset.
//
// It is a logging producer so that whatever is built from it logs like the
// component that built it.
class ALARMMODEL_EXPORT WildcardConfig : public MsgLoggingProducer
{
public:
    WildcardConfig();
    // Logging settings from `logger`; both characters unset.
    explicit WildcardConfig(const MsgLoggingProducer *logger);
    WildcardConfig(const MsgLoggingProducer *logger, QChar matchAllChar, QChar emptyPatternChar);
    WildcardConfig(const WildcardConfig &other) = default;
    WildcardConfig &operator=(const WildcardConfig &other) = default;
    ~WildcardConfig() override;

    QChar getMatchAllChar() const { return m_matchAllChar; }
    void setMatchAllChar(QChar c) { m_matchAllChar = c; }
    bool isMatchAllCharSet() const { return !m_matchAllChar.isNull(); }

    QChar getEmptyPatternChar() const { return m_emptyPatternChar; }
    void setEmptyPatternChar(QChar c) { m_emptyPatternChar = c; }
    bool isEmptyPatternCharSet() const { return !m_emptyPatternChar.isNull(); }

    // The match-all character as a string ("" when unset).
    QString getMatchAllString() const;

    // Compares the characters only, not the logging settings.
    bool operator==(const WildcardConfig &other) const;
    bool operator!=(const WildcardConfig &other) const { return !(*this == other); }

    // {"matchAll": "*", "emptyPattern": ""}: each a string of at most one character,
    // "" or absent meaning unset. On failure `error` says why and nothing changes.
    QJsonObject toJson() const;
    bool fromJson(const QJsonObject &object, const QString &path, QString &error);

private:
    QChar m_matchAllChar;
    QChar m_emptyPatternChar;
};
