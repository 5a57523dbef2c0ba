#include "LogCapture.h"
#include "QuickCellFilter.h"
#include "TextMatcher.h"

#include <QtTest>

class TestQuickCellFilter : public QObject
{
    Q_OBJECT
private slots:
    void matching_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("matchCase");
        QTest::addColumn<bool>("fullColumn");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<bool>("expected");
        // Literal: wildcard and regex characters are plain text.
        QTest::newRow("literal part") << 0 << false << false << "mp 1" << "Pump 1 fault" << true;
        QTest::newRow("literal star is text") << 0 << false << false << "p*" << "pump" << false;
        QTest::newRow("literal full") << 0 << false << true << "pump" << "Pump" << true;
        QTest::newRow("literal full only part") << 0 << false << true << "pump" << "pump 1" << false;
        QTest::newRow("literal case") << 0 << true << false << "pump" << "PUMP" << false;
        // Wildcard: anywhere in the cell unless the full column must match.
        QTest::newRow("wildcard part") << 1 << false << false << "p?mp" << "a pump b" << true;
        QTest::newRow("wildcard full") << 1 << false << true << "p?mp" << "a pump b" << false;
        QTest::newRow("wildcard full star") << 1 << false << true << "*pump*" << "a pump b" << true;
        QTest::newRow("wildcard prefix full") << 1 << false << true << "pu*" << "a pump" << false;
        QTest::newRow("wildcard prefix part") << 1 << false << false << "pu*" << "a pump" << true;
        QTest::newRow("wildcard escape") << 1 << false << false << "100\\%" << "100%" << true;
        QTest::newRow("wildcard case") << 1 << true << false << "Pu*" << "pump" << false;
        QTest::newRow("wildcard across a line break") << 1 << false << false << "e1*l" << "line1\nline2" << true;
        QTest::newRow("wildcard full across a line break")
            << 1 << false << true << "l?ne1?l*" << "line1\nline2" << true;
        QTest::newRow("wildcard beyond the BMP") << 1 << false << false << "p?mp\U0001F525" << "a pump\U0001F525 b" << true;
        QTest::newRow("wildcard full beyond the BMP")
            << 1 << false << true << "*p?mp?" << "a pump\U0001F525" << true;
        const QString pumpValve = QStringLiteral("pumpvalve") + QString(63, QLatin1Char('x'));
        QTest::newRow("wildcard repeated stars") << 1 << false << false << "**pump***valve****" << pumpValve << true;
        QTest::newRow("wildcard full repeated stars")
            << 1 << false << true << "******pump******valve******" << pumpValve << true;
        const QString as = QString(300, QLatin1Char('a'));
        QTest::newRow("wildcard beyond the engine's limits")
            << 1 << false << false << "a*a*a*a*a*a*a*a*b*c" << "x" + as + "B" + as + "C!" << true;
        // Regular expression: searched unless the full column must match.
        QTest::newRow("regex part") << 2 << false << false << "\\d+" << "pump 12" << true;
        QTest::newRow("regex full") << 2 << false << true << "\\d+" << "pump 12" << false;
        QTest::newRow("regex full whole") << 2 << false << true << "pump \\d+" << "PUMP 12" << true;
        QTest::newRow("regex alternative full") << 2 << false << true << "a|b" << "ab" << false;
        QTest::newRow("regex case") << 2 << true << false << "PUMP" << "pump" << false;
    }
    void matching()
    {
        QFETCH(int, mode);
        QFETCH(bool, matchCase);
        QFETCH(bool, fullColumn);
        QFETCH(QString, pattern);
        QFETCH(QString, cell);
        QFETCH(bool, expected);
        QuickCellFilter f;
        f.setMode(mode);
        f.setMatchCase(matchCase);
        f.setMatchFullColumn(fullColumn);
        QVERIFY(f.setString(pattern));
        QCOMPARE(f.matches(cell), expected);
    }

    void validityFollowsTheMode()
    {
        QuickCellFilter f;
        QVERIFY(f.setString(QStringLiteral("a(b")));   // fine as a wildcard
        QVERIFY(!f.setMode(QuickCellFilter::ModeRegularExpression));
        QVERIFY(!f.isValid());
        QCOMPARE(f.getString(), QStringLiteral("a(b")); // kept for the editor
        QVERIFY(!f.matches(QStringLiteral("a(b")));      // an invalid filter shows nothing
        QVERIFY(f.setMode(QuickCellFilter::ModeLiteral));
        QVERIFY(f.matches(QStringLiteral("xa(bx")));

        // Found by fuzzing: matching the full column must not make an
        // unbalanced expression valid by the group put around it.
        QuickCellFilter full;
        full.setMode(QuickCellFilter::ModeRegularExpression);
        full.setMatchFullColumn(true);
        QVERIFY(!full.setString(QStringLiteral("a)|(b")));
        QVERIFY(!full.matches(QStringLiteral("a")));
        QVERIFY(!full.matches(QStringLiteral("a)|(b")));
        QVERIFY(full.setString(QStringLiteral("a|b")));
        QVERIFY(full.matches(QStringLiteral("b")));
        QVERIFY(!full.matches(QStringLiteral("ab")));
    }

    void expressionTheEngineGivesUpOnShowsTheCell()
    {
        // Nested repetitions backtrack past the expression engine's limits:
        // the filter cannot tell, so the cell stays visible and the log says so
        // once.
        LogCapture log;
        QuickCellFilter f;
        f.setWildCardConfig(WildcardConfig(&log.producer, QLatin1Char('*'), QChar()));
        f.setMode(QuickCellFilter::ModeRegularExpression);
        QVERIFY(f.setString(QStringLiteral("(a+)+$")));
        const QString cell = QString(40, QLatin1Char('a')) + QLatin1Char('!');
        QVERIFY(f.matches(cell));
        QVERIFY(f.matches(cell));
        QVERIFY(!f.matches(QStringLiteral("b")));
        QCOMPARE(log.lines().size(), 1);
        QVERIFY2(log.lines().first().contains(QLatin1String("(a+)+$")), qPrintable(log.lines().first()));
    }

    // The fast paths (substring search, segments between stars, simple
    // expressions read as segments) against the expression engine on the
    // same generated cells: every mode, case rule and anchoring, cells with
    // capitals, line breaks, characters beyond the BMP and case-folding
    // oddities (Kelvin sign, long s).
    void fastPathsAgreeWithTheExpressionEngine()
    {
        const QStringList pieces = {QStringLiteral("Pump"), QStringLiteral("pump"), QStringLiteral("PUMP 7"),
                                    QStringLiteral("7"), QStringLiteral("\n"), QStringLiteral("\r\n"),
                                    QStringLiteral("a"), QStringLiteral("\u212a"), QStringLiteral("\u017f"),
                                    QStringLiteral("\U0001F600"), QStringLiteral("\U00010428"), QStringLiteral("x?y"),
                                    QStringLiteral("*"), QStringLiteral("."), QStringLiteral(" ")};
        QRandomGenerator random(4711);
        QStringList cells{QString()};
        for (int i = 0; i < 3000; ++i) {
            QString cell;
            for (int n = int(random.bounded(6)); n > 0; --n)
                cell += pieces.at(int(random.bounded(pieces.size())));
            cells << cell;
        }
        struct Case {
            int mode;
            const char *pattern;
        };
        const Case cases[] = {
            {QuickCellFilter::ModeLiteral, "pump"},       {QuickCellFilter::ModeLiteral, "p 7"},
            {QuickCellFilter::ModeLiteral, "\xe2\x84\xaa"}, {QuickCellFilter::ModeWildcard, "pump*7"},
            {QuickCellFilter::ModeWildcard, "p?mp"},      {QuickCellFilter::ModeWildcard, "*a?*7"},
            {QuickCellFilter::ModeWildcard, "a*?"},       {QuickCellFilter::ModeWildcard, "?"},
            {QuickCellFilter::ModeWildcard, "s*k"},       {QuickCellFilter::ModeWildcard, "\\**\\?"},
            {QuickCellFilter::ModeWildcard, "*p*u*m*p*"}, {QuickCellFilter::ModeRegularExpression, "pump.*7"},
            {QuickCellFilter::ModeRegularExpression, "p.mp"}, {QuickCellFilter::ModeRegularExpression, "a.*"},
            {QuickCellFilter::ModeRegularExpression, ".*"}, {QuickCellFilter::ModeRegularExpression, "s.k"},
            {QuickCellFilter::ModeRegularExpression, "7"}, {QuickCellFilter::ModeWildcard, "pump*"},
            {QuickCellFilter::ModeWildcard, "*\xe2\x84\xaa 7"},
        };
        for (const Case &c : cases) {
            const QString pattern = QString::fromUtf8(c.pattern);
            QString expression = pattern;
            QRegularExpression::PatternOptions options = QRegularExpression::NoPatternOption;
            if (c.mode == QuickCellFilter::ModeLiteral) {
                expression = QRegularExpression::escape(pattern);
            } else if (c.mode == QuickCellFilter::ModeWildcard) {
                expression = TextMatcher::wildcardToRegularExpression(pattern);
                options |= QRegularExpression::DotMatchesEverythingOption;
            }
            for (const bool matchCase : {false, true}) {
                for (const bool fullColumn : {false, true}) {
                    QuickCellFilter filter;
                    filter.setMode(c.mode);
                    filter.setMatchCase(matchCase);
                    filter.setMatchFullColumn(fullColumn);
                    QVERIFY(filter.setString(pattern));
                    const QRegularExpression re(
                        fullColumn ? QRegularExpression::anchoredPattern(expression) : expression,
                        options | (matchCase ? QRegularExpression::NoPatternOption
                                             : QRegularExpression::CaseInsensitiveOption));
                    QVERIFY(re.isValid());
                    const QString what = QStringLiteral("'%1' (mode %2, case %3, full %4) on '%5'")
                                             .arg(pattern).arg(c.mode).arg(matchCase).arg(fullColumn);
                    for (const QString &cell : cells) {
                        if (filter.matches(cell) != re.match(cell).hasMatch())
                            QFAIL(qPrintable(what.arg(cell)));
                    }
                }
            }
        }
    }

    // ASCII patterns ignore case without Qt's folding (letters folded by hand,
    // patterns without letters matched as they are): every character that
    // case folding changes, against every ASCII character, whole, searched
    // and after a "?", must agree with Qt's comparison.
    void asciiPatternsIgnoreCaseAsQtDoes()
    {
        QVector<ushort> folding;
        for (uint u = 0; u <= 0xffff; ++u) {
            if (!QChar::isSurrogate(u) && (u < 0x80 || QChar::toCaseFolded(u) != u))
                folding << ushort(u);
        }
        QVERIFY(folding.size() > 1000);
        for (ushort c = 0; c < 0x80; ++c) {
            const QString pattern(QChar{c});
            TextMatcher whole, anywhere, afterAny;
            QVERIFY(whole.setPattern(pattern, TextMatcher::Exact, Qt::CaseInsensitive, true));
            QVERIFY(anywhere.setPattern(pattern, TextMatcher::Exact, Qt::CaseInsensitive, false));
            QVERIFY(afterAny.setPattern(QStringLiteral("?\\") + pattern, TextMatcher::Wildcard,
                                        Qt::CaseInsensitive, true));
            for (const ushort u : qAsConst(folding)) {
                const QString text(QChar{u});
                const bool expected = text.compare(pattern, Qt::CaseInsensitive) == 0;
                if (whole.matches(text) != expected || anywhere.matches(text) != expected ||
                    afterAny.matches(QLatin1Char('x') + text) != expected)
                    QFAIL(qPrintable(QStringLiteral("pattern U+%1 on U+%2").arg(c, 4, 16).arg(u, 4, 16)));
            }
        }
    }

    void emptyFiltersAndEquality()
    {
        QuickCellFilter f;
        QVERIFY(f.isEmpty());
        QVERIFY(f.matches(QStringLiteral("anything")));
        f.setWildCardConfig(WildcardConfig(nullptr, QLatin1Char('%'), QChar()));
        f.setString(QStringLiteral("%"));
        QVERIFY(f.isEmpty()); // the match-all character alone
        f.setMode(QuickCellFilter::ModeLiteral);
        QVERIFY(!f.isEmpty()); // ...is just a percent sign in literal mode

        QuickCellFilter a, b;
        a.setString(QStringLiteral("x"));
        b.setString(QStringLiteral("x"));
        QVERIFY(a == b);
        b.setMatchFullColumn(true);
        QVERIFY(a != b);
        b.setMatchFullColumn(false);
        b.setWildCardConfig(WildcardConfig(nullptr, QLatin1Char('%'), QChar()));
        QVERIFY(a == b); // the wildcard rules belong to the screen, not to the filter
    }
};

QTEST_GUILESS_MAIN(TestQuickCellFilter)
#include "tst_quickcellfilter.moc"
