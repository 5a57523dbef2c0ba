#include "QuickCellFilter.h"

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
