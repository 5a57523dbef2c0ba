#include "QuickFilterEditor.h"
#include "QuickFilterOptions.h"

#include <QAction>
#include <QCheckBox>
#include <QRadioButton>
#include <QToolButton>
#include <QToolTip>
#include <QtTest>

namespace {

const QColor kYellow(255, 255, 192);
const QColor kRed(255, 160, 160);

QColor background(const QuickFilterEditor &editor)
{
    return editor.palette().color(editor.backgroundRole());
}

bool isNormal(const QuickFilterEditor &editor)
{
    return background(editor) == QApplication::palette().color(editor.backgroundRole());
}

QuickCellFilter filterOf(const QSignalSpy &spy)
{
    return spy.last().at(0).value<QuickCellFilter>();
}

template <typename T>
T *child(const QuickFilterEditor &editor, const char *name)
{
    return editor.getOptions()->findChild<T *>(QLatin1String(name));
}

QAction *optionsAction(const QuickFilterEditor &editor)
{
    for (QAction *action : editor.actions()) {
        if (action->toolTip() == QLatin1String("Edit options"))
            return action;
    }
    return nullptr;
}

} // namespace

class TestQuickFilter : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        m_editor.reset(new QuickFilterEditor(nullptr));
        m_editor->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_editor.data()));
        m_modified.reset(new QSignalSpy(m_editor.data(), SIGNAL(filterModified(QuickCellFilter))));
    }
    void cleanup()
    {
        m_modified.reset();
        m_editor.reset();
    }

    void typingMarksNotAppliedAndReturnEmits()
    {
        QVERIFY(isNormal(*m_editor));
        QTest::keyClicks(m_editor.data(), QStringLiteral("pump*"));
        QCOMPARE(background(*m_editor), kYellow);
        QCOMPARE(m_modified->count(), 0);

        QTest::keyClick(m_editor.data(), Qt::Key_Return);
        QCOMPARE(m_modified->count(), 1);
        QCOMPARE(filterOf(*m_modified).getString(), QStringLiteral("pump*"));
        QCOMPARE(filterOf(*m_modified).getMode(), 1);

        m_editor->setSelection(0, 2);
        m_editor->setAppliedFilter(filterOf(*m_modified));
        QVERIFY(isNormal(*m_editor));
        QVERIFY(!m_editor->hasSelectedText());
        QCOMPARE(m_editor->cursorPosition(), 5);

        // Typing back to the applied text makes it normal again.
        QTest::keyClick(m_editor.data(), Qt::Key_Backspace);
        QCOMPARE(background(*m_editor), kYellow);
        QTest::keyClicks(m_editor.data(), QStringLiteral("*"));
        QVERIFY(isNormal(*m_editor));
        QCOMPARE(m_modified->count(), 1);
    }

    void invalidRegularExpressionIsNeverEmitted()
    {
        child<QRadioButton>(*m_editor, "radioButtonRegExp")->click();
        QTest::keyClicks(m_editor.data(), QStringLiteral("a(b"));
        QCOMPARE(background(*m_editor), kRed);
        QCOMPARE(QToolTip::text(), QStringLiteral("Incorrect pattern: a(b"));
        QTest::keyClick(m_editor.data(), Qt::Key_Return);
        QCOMPARE(m_modified->count(), 0);

        // Closing the bracket makes it valid (and not applied).
        QTest::keyClicks(m_editor.data(), QStringLiteral(")"));
        QCOMPARE(background(*m_editor), kYellow);
        QTest::keyClick(m_editor.data(), Qt::Key_Return);
        QCOMPARE(m_modified->count(), 1);
        QCOMPARE(filterOf(*m_modified).getString(), QStringLiteral("a(b)"));

        // The same text is fine as a literal string, and invalid again as a
        // regular expression: the mode change alone turns it red.
        m_editor->setText(QStringLiteral("x["));
        QCOMPARE(background(*m_editor), kRed);
        child<QRadioButton>(*m_editor, "radioButtonString")->click();
        QCOMPARE(background(*m_editor), kYellow);
        child<QRadioButton>(*m_editor, "radioButtonRegExp")->click();
        QCOMPARE(background(*m_editor), kRed);
        QCOMPARE(m_modified->count(), 1);
    }

    void applyingAValidFilterOverAnInvalidEditShowsNoError()
    {
        child<QRadioButton>(*m_editor, "radioButtonRegExp")->click();
        QTest::keyClicks(m_editor.data(), QStringLiteral("a("));
        QCOMPARE(QToolTip::text(), QStringLiteral("Incorrect pattern: a("));
        QToolTip::hideText();
        QTRY_VERIFY(QToolTip::text().isEmpty());

        // The options change with the filter: the old text must not be judged
        // under them on the way.
        QuickCellFilter applied;
        applied.setMode(2);
        applied.setMatchCase(true);
        applied.setMatchFullColumn(true);
        QVERIFY(applied.setString(QStringLiteral("abc")));
        m_editor->setAppliedFilter(applied);
        QVERIFY(QToolTip::text().isEmpty());
        QVERIFY(isNormal(*m_editor));
        QVERIFY(m_editor->getEditedFilter() == applied);
        QCOMPARE(m_modified->count(), 0);
    }

    void optionsChangeWithoutEmitting()
    {
        QuickCellFilter applied;
        applied.setString(QStringLiteral("a*"));
        m_editor->setAppliedFilter(applied);
        QVERIFY(isNormal(*m_editor));

        auto *matchCase = child<QCheckBox>(*m_editor, "checkBoxMatchCase");
        auto *fullColumn = child<QCheckBox>(*m_editor, "checkBoxMatchFullColumn");
        matchCase->click();
        QCOMPARE(background(*m_editor), kYellow);
        matchCase->click();
        QVERIFY(isNormal(*m_editor));
        fullColumn->click();
        QCOMPARE(background(*m_editor), kYellow);
        child<QRadioButton>(*m_editor, "radioButtonString")->click();
        QCOMPARE(m_modified->count(), 0);

        QTest::keyClick(m_editor.data(), Qt::Key_Return);
        QCOMPARE(m_modified->count(), 1);
        const QuickCellFilter emitted = filterOf(*m_modified);
        QCOMPARE(emitted.getMode(), 0);
        QVERIFY(emitted.isMatchFullColumn());
        QVERIFY(!emitted.isMatchCase());
        QCOMPARE(emitted.getString(), QStringLiteral("a*"));

        // The popup follows the filter in force.
        QuickCellFilter regExp;
        regExp.setMode(2);
        regExp.setMatchCase(true);
        m_editor->setAppliedFilter(regExp);
        QVERIFY(child<QRadioButton>(*m_editor, "radioButtonRegExp")->isChecked());
        QVERIFY(matchCase->isChecked());
        QVERIFY(!fullColumn->isChecked());
        QVERIFY(isNormal(*m_editor));
    }

    void oneClickOnARadioButtonAnnouncesOneMode()
    {
        QuickFilterOptions options(nullptr, nullptr);
        QSignalSpy modes(&options, SIGNAL(modeChanged(int)));
        QuickCellFilter filter;
        options.setFilterOptions(filter);
        QCOMPARE(modes.count(), 0);
        options.findChild<QRadioButton *>(QStringLiteral("radioButtonRegExp"))->click();
        options.findChild<QRadioButton *>(QStringLiteral("radioButtonRegExp"))->click();
        options.findChild<QRadioButton *>(QStringLiteral("radioButtonWildCard"))->click();
        QCOMPARE(modes.count(), 2);
        QCOMPARE(modes.at(0).at(0).toInt(), 2);
        QCOMPARE(modes.at(1).at(0).toInt(), 1);
    }

    void clearButtonAppliesTheEmptyFilter()
    {
        // clear() takes the empty filter as the applied one, without emitting.
        QTest::keyClicks(m_editor.data(), QStringLiteral("abc"));
        QCOMPARE(background(*m_editor), kYellow);
        m_editor->clear();
        QVERIFY(m_editor->text().isEmpty());
        QVERIFY(isNormal(*m_editor));
        QVERIFY(m_editor->getAppliedFilter() == m_editor->getEditedFilter());
        QCOMPARE(m_modified->count(), 0);

        QuickCellFilter applied;
        applied.setString(QStringLiteral("abc"));
        m_editor->setAppliedFilter(applied);
        // Of the two buttons in the line edit, the clear button is not the options one.
        QToolButton *clearButton = nullptr;
        for (QToolButton *button : m_editor->findChildren<QToolButton *>()) {
            if (button->defaultAction() && button->defaultAction() != optionsAction(*m_editor))
                clearButton = button;
        }
        QVERIFY(clearButton);
        clearButton->click();
        QVERIFY(m_editor->text().isEmpty());
        QCOMPARE(m_modified->count(), 1);
        QVERIFY(filterOf(*m_modified).isEmpty());
        m_editor->setAppliedFilter(filterOf(*m_modified));
        QVERIFY(isNormal(*m_editor));
        QCOMPARE(m_modified->count(), 1);
    }

    void optionsPopupToggles()
    {
        QAction *setup = optionsAction(*m_editor);
        QVERIFY(setup);
        QuickFilterOptions *options = m_editor->getOptions();
        setup->trigger();
        QVERIFY(options->isVisible());
        QCOMPARE(options->pos(), m_editor->mapToGlobal(QPoint(0, m_editor->height() - 1)));
        setup->trigger();
        QVERIFY(!options->isVisible());
    }

    void wildcardConfigGivesThePlaceholder()
    {
        m_editor->setWildcardConfig(WildcardConfig(nullptr, QLatin1Char('*'), QChar()));
        QVERIFY(m_editor->placeholderText().isEmpty());
        m_editor->setWildcardConfig(WildcardConfig(nullptr, QLatin1Char('%'), QLatin1Char('~')));
        QCOMPARE(m_editor->placeholderText(), QStringLiteral("%"));
        QCOMPARE(m_editor->getEditedFilter().getWildCardConfig().getMatchAllChar(), QLatin1Char('%'));
        QCOMPARE(m_editor->getAppliedFilter().getWildCardConfig().getMatchAllChar(), QLatin1Char('%'));
    }

private:
    QScopedPointer<QuickFilterEditor> m_editor;
    QScopedPointer<QSignalSpy> m_modified;
};

QTEST_MAIN(TestQuickFilter)
#include "tst_quickfilter.moc"
