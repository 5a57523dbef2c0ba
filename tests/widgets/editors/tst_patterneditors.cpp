// The pattern editors as the operator uses them: typing, completing with the
// keyboard, pasting, loading and producing pattern filters.

#include "ExpandingStringPatternEdit.h"
#include "InEwoFocusProcessor.h"
#include "SingleLineTextEdit.h"
#include "StringPatternEditor.h"
#include "StringPatternTextEdit.h"
#include "ValueFilterStringPattern.h"
#include "ValueFilterText.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextLayout>
#include <QVBoxLayout>
#include <QtTest>

namespace {

const QString kColumn = QStringLiteral("text");

WildcardConfig wildcards(QChar emptyPattern = QChar())
{
    return WildcardConfig(nullptr, QLatin1Char('*'), emptyPattern);
}

// Where the window system delivers a key: to an open pop-up (its focus widget
// if it has one), otherwise to the focus widget.
QWidget *keyReceiver()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup->focusWidget() ? popup->focusWidget() : popup;
    return QApplication::focusWidget();
}

// Types as the operator does: each key goes where the window system would send it.
void type(const QString &text)
{
    for (const QChar c : text)
        QTest::keyClicks(keyReceiver(), QString(c));
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(keyReceiver(), key, modifiers);
}

// The rows the completion pop-up lists.
QStringList popupRows(QCompleter *completer)
{
    QStringList rows;
    if (!completer || !completer->popup()->isVisible())
        return rows;
    const QAbstractItemModel *model = completer->popup()->model();
    for (int row = 0; row < model->rowCount(); ++row)
        rows << model->index(row, 0).data().toString();
    return rows;
}

QString currentRow(QCompleter *completer)
{
    return completer->popup()->currentIndex().data().toString();
}

// The ranges the highlighter formats, as "start+length".
QStringList highlighted(QTextEdit *edit)
{
    QStringList ranges;
    for (const QTextLayout::FormatRange &range : edit->document()->firstBlock().layout()->formats())
        ranges << QStringLiteral("%1+%2").arg(range.start).arg(range.length);
    return ranges;
}

QSharedPointer<ValueFilter> pattern(const QString &text, const QString &column = kColumn,
                                    Constants::ValueSource source = Constants::ValueSourceAlarm)
{
    auto filter = QSharedPointer<ValueFilterStringPattern>::create(wildcards(), column, source, false);
    filter->setFilterText(text);
    return filter;
}

QString patternText(const QSharedPointer<ValueFilter> &filter)
{
    const auto *p = dynamic_cast<const ValueFilterStringPattern *>(filter.data());
    return p ? p->getFilterText() : QStringLiteral("(not a pattern)");
}

const QStringList kValues{QStringLiteral("pump2"), QStringLiteral("Pump1"), QStringLiteral("valve"),
                          QStringLiteral("pipe")};

} // namespace

class TestPatternEditors : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        m_window.reset(new QWidget);
        m_window->resize(400, 200);
        new QVBoxLayout(m_window.data());
        // Takes the focus when the window opens, so that the editors get it from
        // the test.
        addToWindow(new QLineEdit);
    }

    void cleanup() { m_window.reset(); }

    void separatorsAreHighlightedUnlessEscaped()
    {
        auto *edit = addToWindow(new SingleLineTextEdit(wildcards()));
        auto *patternEdit = addToWindow(new StringPatternTextEdit(wildcards(), kColumn, Constants::ValueSourceAlarm));
        showWindow();
        edit->setText(QStringLiteral("a\\;b;c,d"));
        QCOMPARE(highlighted(edit), (QStringList{"4+1", "6+1"}));
        const QTextCharFormat format = edit->document()->firstBlock().layout()->formats().first().format;
        QCOMPARE(format.foreground().color(), QColor(Qt::red));
        QCOMPARE(format.fontWeight(), 75);
        QCOMPARE(format.fontPointSize(), 11.0);

        patternEdit->setFocus();
        type(QStringLiteral("x;y\\,z"));
        QCOMPARE(highlighted(patternEdit), QStringList{"1+1"});
    }

    void singleLineCompletesThePartUnderTheCursor()
    {
        auto *edit = addToWindow(new SingleLineTextEdit(wildcards()));
        auto *next = addToWindow(new SingleLineTextEdit(wildcards()));
        showWindow();
        edit->setCompletionStrings(kValues);
        QCompleter *completer = edit->getCompleter();
        // Focus opens the whole list, sorted without regard to case.
        edit->setFocus();
        QCOMPARE(popupRows(completer), (QStringList{"pipe", "Pump1", "pump2", "valve"}));
        QCOMPARE(currentRow(completer), QString());

        // The list narrows as the operator types; arrows choose, Return accepts.
        type(QStringLiteral("pu"));
        QCOMPARE(popupRows(completer), (QStringList{"Pump1", "pump2"}));
        QCOMPARE(currentRow(completer), QStringLiteral("Pump1"));
        press(Qt::Key_Down);
        QCOMPARE(currentRow(completer), QStringLiteral("pump2"));
        press(Qt::Key_Return);
        QCOMPARE(edit->toPlainText(), QStringLiteral("pump2;"));
        QVERIFY(edit->hasFocus());
        // The next part starts empty: the whole list again. Escape closes it and
        // changes nothing.
        QCOMPARE(popupRows(completer).size(), 4);
        press(Qt::Key_Escape);
        QVERIFY(!completer->popup()->isVisible());
        QCOMPARE(edit->toPlainText(), QStringLiteral("pump2;"));

        type(QStringLiteral("VA"));
        QCOMPARE(popupRows(completer), QStringList{"valve"});
        press(Qt::Key_Return);
        QCOMPARE(edit->toPlainText(), QStringLiteral("pump2;valve;"));

        // Nothing matches: no list; Return then moves on to the next widget.
        type(QStringLiteral("zz"));
        QVERIFY(!completer->popup()->isVisible());
        QSignalSpy lost(edit, SIGNAL(lostFocus()));
        press(Qt::Key_Return);
        QVERIFY(next->hasFocus());
        QCOMPARE(lost.count(), 1);
        QCOMPARE(edit->toPlainText(), QStringLiteral("pump2;valve;zz"));

        // In the middle part of x;ab;y the completion replaces ab and brings its
        // own separator.
        edit->setCompletionStrings({QStringLiteral("abc"), QStringLiteral("xyz")});
        edit->setText(QStringLiteral("x;ab;y"));
        edit->setFocus();
        QTextCursor cursor = edit->textCursor();
        cursor.setPosition(4);
        edit->setTextCursor(cursor);
        QTRY_COMPARE(popupRows(completer), QStringList{"abc"});
        press(Qt::Key_Return);
        QCOMPARE(edit->toPlainText(), QStringLiteral("x;abc;;y"));

        // No values, no completer.
        edit->setCompletionStrings({});
        QVERIFY(!edit->getCompleter());
    }

    void pastedLinesBecomeParts()
    {
        auto *edit = addToWindow(new SingleLineTextEdit(wildcards()));
        showWindow();
        edit->setFocus();
        QApplication::clipboard()->setText(QStringLiteral("A\nB\nC"));
        press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(edit->toPlainText(), QStringLiteral("A;B;C"));
        QCOMPARE(edit->document()->blockCount(), 1);
    }

    void focusNavigationClosesTheValueList()
    {
        auto *edit = addToWindow(new SingleLineTextEdit(wildcards()));
        auto *next = addToWindow(new SingleLineTextEdit(wildcards()));
        InEwoFocusProcessor processor(nullptr, m_window.data());
        showWindow();
        edit->setCompletionStrings(kValues);
        QSignalSpy lost(edit, SIGNAL(lostFocus()));
        edit->setFocus();
        QVERIFY(edit->getCompleter()->popup()->isVisible());
        QVERIFY(processor.focusNextPrevEwoWidget(true));
        QVERIFY(!edit->getCompleter()->popup()->isVisible());
        QVERIFY(next->hasFocus());
        QCOMPARE(lost.count(), 1);

        // Walking the form with Tab passes through without opening the list.
        next->setCompletionStrings(kValues);
        QVERIFY(processor.focusNextPrevEwoWidget(false));
        QVERIFY(edit->hasFocus());
        QVERIFY(!edit->getCompleter()->popup()->isVisible());
        QTest::keyClick(edit, Qt::Key_Tab);
        QTRY_VERIFY(next->hasFocus());
        QVERIFY(!next->getCompleter()->popup()->isVisible());
        QCOMPARE(edit->toPlainText(), QString());
    }

    void patternTextEditCompletesWords()
    {
        auto *edit = addToWindow(new StringPatternTextEdit(wildcards(), kColumn, Constants::ValueSourceAlarm));
        showWindow();
        edit->setCompletionStrings(kValues);
        QCompleter *completer = edit->getCompleter();
        edit->setFocus();
        // Focus alone does not open it here.
        QVERIFY(!completer->popup()->isVisible());
        type(QStringLiteral("p"));
        QCOMPARE(popupRows(completer), (QStringList{"pipe", "Pump1", "pump2"}));
        type(QStringLiteral("u"));
        QCOMPARE(popupRows(completer), (QStringList{"Pump1", "pump2"}));
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QCOMPARE(edit->toPlainText(), QStringLiteral("pump2"));
        QVERIFY(!completer->popup()->isVisible());

        // Punctuation ends the word and closes the list.
        type(QStringLiteral(";v"));
        QCOMPARE(popupRows(completer), QStringList{"valve"});
        type(QStringLiteral("."));
        QVERIFY(!completer->popup()->isVisible());

        // Ctrl+E opens it even on an empty word; Escape closes it.
        type(QStringLiteral(";"));
        press(Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(popupRows(completer).size(), 4);
        press(Qt::Key_Escape);
        QVERIFY(!completer->popup()->isVisible());
        QCOMPARE(edit->toPlainText(), QStringLiteral("pump2;v.;"));

        const QSharedPointer<ValueFilter> filter = edit->getFilter(true);
        QVERIFY(filter);
        QVERIFY(!dynamic_cast<QWidget *>(filter.data()));
        QCOMPARE(patternText(filter), QStringLiteral("pump2;v.;"));
        QVERIFY(filter->isMatchCase());
        QVERIFY(filter->matches(QStringLiteral("pump2")));
        QVERIFY(!filter->matches(QStringLiteral("Pump2")));
    }

    void neverEmptyWithTheEmptyPatternCharacter()
    {
        auto *edit = addToWindow(new StringPatternTextEdit(wildcards(QLatin1Char('~')), kColumn,
                                                           Constants::ValueSourceAlarm));
        auto *plain = addToWindow(new StringPatternTextEdit(wildcards(), kColumn, Constants::ValueSourceAlarm));
        showWindow();
        QCOMPARE(edit->toPlainText(), QStringLiteral("*"));
        edit->setFocus();
        press(Qt::Key_End);
        type(QStringLiteral("a"));
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
        QCOMPARE(edit->toPlainText(), QStringLiteral("*"));
        // Match-all and nothing at all both restrict nothing.
        QVERIFY(!edit->getFilter(false));
        QVERIFY(!plain->getFilter(false));
        QVERIFY(plain->toPlainText().isEmpty());
    }

    void stringPatternEditorLoadsAndProducesFilters()
    {
        auto *editor = addToWindow(new StringPatternEditor(wildcards(), kColumn, Constants::ValueSourceAlarm));
        auto *next = addToWindow(new SingleLineTextEdit(wildcards()));
        showWindow();
        QSignalSpy changed(editor, SIGNAL(filterChanged()));
        QSignalSpy textChanged(editor, SIGNAL(filterTextChanged(QString, QString)));

        QString error;
        QVERIFY(editor->setFilter(pattern(QStringLiteral("a*;!b")), true, error));
        QCOMPARE(editor->getTextEdit()->toPlainText(), QStringLiteral("a*;!b"));
        QCOMPARE(changed.count(), 0);

        // Foreign kinds and properties are refused; only a property mismatch says why.
        QVERIFY(!editor->setFilter(pattern(QStringLiteral("x"), QStringLiteral("other")), false, error));
        QCOMPARE(error, QStringLiteral("attempt to set filter for value 'other' to widget for column 'text'"));
        error.clear();
        QVERIFY(!editor->setFilter(QSharedPointer<ValueFilterText>::create(wildcards(), kColumn,
                                                                           Constants::ValueSourceAlarm, false),
                                   false, error));
        QVERIFY(error.isEmpty());
        QVERIFY(!editor->setFilter(QSharedPointer<ValueFilter>(), false, error));
        QCOMPARE(editor->getTextEdit()->toPlainText(), QStringLiteral("a*;!b"));

        // The operator's edit is announced; leaving the editor reports its text.
        editor->getTextEdit()->setFocus();
        press(Qt::Key_End);
        type(QStringLiteral(";c"));
        QVERIFY(changed.count() >= 2);
        QCOMPARE(textChanged.count(), 0);
        next->setFocus();
        QCOMPARE(textChanged.count(), 1);
        QCOMPARE(textChanged.last(), (QVariantList{kColumn, QStringLiteral("a*;!b;c")}));

        QSharedPointer<ValueFilter> filter = editor->getFilter(false);
        QVERIFY(filter);
        QCOMPARE(filter->getValueId(), kColumn);
        QCOMPARE(patternText(filter), QStringLiteral("a*;!b;c"));
        QVERIFY(!filter->isMatchCase());
        QVERIFY(filter->matches(QStringLiteral("C")));
        QVERIFY(filter->matches(QStringLiteral("ab")));
        QVERIFY(!filter->matches(QStringLiteral("b")));

        editor->getTextEdit()->setText(QStringLiteral(" ; "));
        QVERIFY(!editor->getFilter(false));
    }

    void matchCaseNarrowsTheCompletions()
    {
        auto *editor = addToWindow(new StringPatternEditor(wildcards(), kColumn, Constants::ValueSourceAlarm));
        showWindow();
        editor->setCompletionStrings(kValues);
        editor->setMatchCase(true);
        SingleLineTextEdit *edit = editor->getTextEdit();
        edit->setFocus();
        // Sorted by code point with case: capitals first.
        QCOMPARE(popupRows(edit->getCompleter()), (QStringList{"Pump1", "pipe", "pump2", "valve"}));
        type(QStringLiteral("p"));
        QCOMPARE(popupRows(edit->getCompleter()), (QStringList{"pipe", "pump2"}));
        editor->setMatchCase(false);
        press(Qt::Key_Backspace);
        type(QStringLiteral("p"));
        QCOMPARE(popupRows(edit->getCompleter()), (QStringList{"pipe", "Pump1", "pump2"}));
    }

    void expandingEditOpensItsPopupWhenTheTextNeedsRoom()
    {
        auto *editor = addToWindow(new ExpandingStringPatternEdit(wildcards(), kColumn, Constants::ValueSourceAlarm));
        editor->setFixedHeight(30);
        auto *next = addToWindow(new SingleLineTextEdit(wildcards()));
        showWindow();
        editor->setMaximumExpandedSize(QSize(1000, 80));
        StringPatternTextEdit *edit = editor->getPatternTextEdit();
        QWidget *popup = editor->getPopup();
        QCOMPARE(editor->getPopupTextEdit()->document(), edit->document());

        QSignalSpy changed(editor, SIGNAL(filterChanged()));
        QString error;
        QString longText = QStringLiteral("pattern");
        for (int i = 0; i < 39; ++i)
            longText += QStringLiteral(";pattern");
        QVERIFY(editor->setFilter(pattern(longText), false, error));
        QVERIFY(!popup->isVisible());
        QCOMPARE(changed.count(), 0);

        // A short text fits: typing does not open it.
        QVERIFY(editor->setFilter(pattern(QStringLiteral("a")), false, error));
        edit->setFocus();
        press(Qt::Key_End);
        type(QStringLiteral(";b"));
        QVERIFY(!popup->isVisible());
        QCOMPARE(changed.count(), 2);

        // Once the text wraps, the larger copy opens over the editor, capped in height,
        // and the typing goes on there in the same text.
        type(QStringLiteral(";") + longText);
        QVERIFY(popup->isVisible());
        QCOMPARE(popup->height(), 80);
        QVERIFY(editor->getPopupTextEdit()->hasFocus());
        type(QStringLiteral(";end"));
        QVERIFY(edit->toPlainText().endsWith(QStringLiteral(";end")));
        // The copy completes too, over its own pop-up.
        editor->setCompletionStrings(kValues);
        QCompleter *completer = editor->getPopupTextEdit()->getCompleter();
        type(QStringLiteral(";va"));
        QCOMPARE(popupRows(completer), QStringList{"valve"});
        press(Qt::Key_Return);
        QVERIFY(!completer->popup()->isVisible());
        QVERIFY(popup->isVisible());
        QVERIFY(edit->toPlainText().endsWith(QStringLiteral(";end;valve")));

        QSignalSpy textChanged(editor, SIGNAL(filterTextChanged(QString, QString)));
        popup->hide();
        next->setFocus();
        QTRY_VERIFY(textChanged.count() >= 1);
        QCOMPARE(textChanged.last().at(1).toString(), edit->toPlainText());
        const QSharedPointer<ValueFilter> filter = editor->getFilter(false);
        QCOMPARE(patternText(filter), QStringLiteral("a;b;") + longText + QStringLiteral(";end;valve"));
    }

private:
    template <typename W>
    W *addToWindow(W *widget)
    {
        m_window->layout()->addWidget(widget);
        return widget;
    }

    void showWindow()
    {
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    }

    QScopedPointer<QWidget> m_window;
};

QTEST_MAIN(TestPatternEditors)
#include "tst_patterneditors.moc"
