#include "LogCapture.h"
#include "ValueFilterFixedMulti.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterSingleValue.h"
#include "WFixedFilterToggleButton.h"
#include "WFixedMultiFilterToggle.h"
#include "WTextFilter.h"

#include <QToolButton>
#include <QtTest>

namespace {

const QString kColumn = QStringLiteral("acknowledged");

QSharedPointer<ValueFilterFixed> fixed(const QString &kind, bool checked = false,
                                       const QString &column = kColumn,
                                       Constants::ValueSource source = Constants::ValueSourceAlarm)
{
    return QSharedPointer<ValueFilterFixed>::create(WildcardConfig(), column, source, false, kind,
                                                    QVariant(), checked);
}

QSharedPointer<ValueFilterFixedMulti> priorities(const QStringList &kinds = {QStringLiteral("high"),
                                                                             QStringLiteral("low")})
{
    auto multi = QSharedPointer<ValueFilterFixedMulti>::create(WildcardConfig(), QStringLiteral("priority"),
                                                               Constants::ValueSourceAlarm, false);
    for (const QString &kind : kinds)
        multi->addFixedFilter(fixed(kind, false, QStringLiteral("priority")));
    return multi;
}

bool isChecked(const QSharedPointer<ValueFilterFixedMulti> &multi, const QString &kind)
{
    return multi->findFixedFilter(kind)->isChecked();
}

// Built like the number rule editor: the widget is itself the filter it edits,
// so it has both bases' accessors and members in scope.
class NumbersEditor : public WFilter, public ValueFilterNumbers
{
    Q_OBJECT
public:
    using WFilter::getSource;

    NumbersEditor(const WildcardConfig &config, const QString &columnId, Constants::ValueSource source)
        : WFilter(config, columnId, source, nullptr), ValueFilterNumbers(config, columnId, source, false)
    {
    }
    QSharedPointer<ValueFilter> getFilter(bool) override
    {
        if (isEmpty())
            return {};
        return QSharedPointer<ValueFilterNumbers>::create(*this);
    }
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool, QString &errorText) override
    {
        if (!isPropertyMatch(filter, errorText))
            return false;
        const auto numbers = filter.dynamicCast<ValueFilterNumbers>();
        if (!numbers)
            return false;
        setFilterText(numbers->getFilterText());
        return true;
    }
    void setMatchCase(bool) override {}

    // As the other editors build their filters, from the widget's own settings.
    QSharedPointer<ValueFilter> singleValueFilter(const QVariant &value) const
    {
        auto filter = QSharedPointer<ValueFilterSingleValue>::create(m_wildcardConfig, getColumnId(),
                                                                     getSource(), false);
        filter->setFilterValue(value);
        return filter;
    }
    void setWidgetWildcards(const WildcardConfig &config) { m_wildcardConfig = config; }
};

} // namespace

class TestFilterWidgets : public QObject
{
    Q_OBJECT
private slots:
    void propertyMatchMessages()
    {
        WFixedFilterToggleButton editor(WildcardConfig(), fixed(QStringLiteral("unack")), nullptr);
        QString error = QStringLiteral("untouched");
        QVERIFY(editor.isPropertyMatch(fixed(QStringLiteral("other")), error));
        QCOMPARE(error, QStringLiteral("untouched"));

        QVERIFY(!editor.isPropertyMatch(fixed(QStringLiteral("x"), false, QStringLiteral("text")), error));
        QCOMPARE(error, QStringLiteral("attempt to set filter for value 'text' to widget for column 'acknowledged'"));

        QVERIFY(!editor.isPropertyMatch(
            fixed(QStringLiteral("x"), false, kColumn, Constants::ValueSourceDerived), error));
        QCOMPARE(error, QStringLiteral("attempt to set filter for value 'acknowledged' source 2 to widget "
                                       "for source '0'"));
        QVERIFY(!editor.isPropertyMatch(QSharedPointer<ValueFilter>(), error));

        // A value id that looks like a placeholder is shown as it is.
        const QString odd = QStringLiteral("level%2%3");
        WFixedFilterToggleButton oddEditor(WildcardConfig(), fixed(QStringLiteral("unack"), false, odd), nullptr);
        QVERIFY(!oddEditor.isPropertyMatch(
            fixed(QStringLiteral("x"), false, odd, Constants::ValueSourceDpConfig), error));
        QCOMPARE(error, QStringLiteral("attempt to set filter for value 'level%2%3' source 1 to widget "
                                       "for source '0'"));
    }

    void editorThatIsItsOwnFilter()
    {
        const WildcardConfig percent(nullptr, QLatin1Char('%'), QLatin1Char('~'));
        NumbersEditor editor(percent, QStringLiteral("priority"), Constants::ValueSourceDerived);
        QCOMPARE(static_cast<WFilter &>(editor).getSource(), Constants::ValueSourceDerived);
        QCOMPARE(static_cast<ValueFilter &>(editor).getSource(), Constants::ValueSourceDerived);
        QCOMPARE(editor.getSource(), Constants::ValueSourceDerived);
        QCOMPARE(editor.getWildcardConfig().getMatchAllChar(), QLatin1Char('%'));

        auto given = QSharedPointer<ValueFilterNumbers>::create(percent, QStringLiteral("priority"),
                                                                Constants::ValueSourceDerived, false);
        given->setFilterText(QStringLiteral(">10"));
        QString error;
        QVERIFY(editor.setFilter(given, false, error));
        QVERIFY(editor.matches(11));
        QVERIFY(!editor.matches(5));
        const QSharedPointer<ValueFilter> copy = editor.getFilter(false);
        QVERIFY(copy && *copy == *given);
        QVERIFY(!dynamic_cast<WFilter *>(copy.data())); // a plain filter, not a second widget

        // The widget's wildcard rules are its own; the filter part keeps its copy.
        editor.setWidgetWildcards(WildcardConfig(nullptr, QLatin1Char('#'), QChar()));
        const QSharedPointer<ValueFilter> single = editor.singleValueFilter(3);
        QCOMPARE(single->getWildcardConfig().getMatchAllChar(), QLatin1Char('#'));
        QCOMPARE(single->getSource(), Constants::ValueSourceDerived);
        QCOMPARE(editor.getWildcardConfig().getMatchAllChar(), QLatin1Char('%'));
    }

    void toggleButtonClicks()
    {
        auto filter = fixed(QStringLiteral("unack"), true);
        WFixedFilterToggleButton editor(WildcardConfig(), filter, nullptr);
        auto *button = editor.findChild<QToolButton *>();
        QVERIFY(button && button->isCheckable());
        QVERIFY(button->isChecked());
        QSignalSpy changed(&editor, SIGNAL(filterChanged()));

        button->click();
        QVERIFY(!filter->isChecked()); // the shared filter changes in place
        QCOMPARE(changed.count(), 1);

        // A click that finds the filter already in the button's state says nothing.
        filter->setChecked(true);
        button->click();
        QCOMPARE(changed.count(), 1);
    }

    void toggleButtonLoadsAndCopies()
    {
        auto filter = fixed(QStringLiteral("unack"));
        WFixedFilterToggleButton editor(WildcardConfig(), filter, nullptr);
        auto *button = editor.findChild<QToolButton *>();
        QSignalSpy changed(&editor, SIGNAL(filterChanged()));
        QString error;

        QVERIFY(!editor.setFilter(QSharedPointer<ValueFilter>(), false, error));
        QVERIFY(!editor.setFilter(QSharedPointer<ValueFilterSingleValue>::create(
                                      WildcardConfig(), kColumn, Constants::ValueSourceAlarm, false),
                                  false, error));
        QVERIFY(error.isEmpty());
        QVERIFY(!editor.setFilter(fixed(QStringLiteral("other"), true), false, error));
        QVERIFY(error.isEmpty());
        QVERIFY(!button->isChecked());

        QVERIFY(editor.setFilter(fixed(QStringLiteral("unack"), true), true, error));
        QVERIFY(filter->isChecked() && button->isChecked());
        QVERIFY(filter->isMatchCase());
        QCOMPARE(changed.count(), 0);

        const QSharedPointer<ValueFilter> copy = editor.getFilter(false);
        QVERIFY(copy && copy != filter);
        QVERIFY(copy->isEqual(*filter));
        QVERIFY(!filter->isMatchCase()); // the held filter takes the case rule too
        filter->setChecked(false);
        QVERIFY(copy.dynamicCast<ValueFilterFixed>()->isChecked());
    }

    void multiToggleButtons()
    {
        LogCapture log;
        const WildcardConfig config(&log.producer);
        auto multi = priorities();
        WFixedMultiFilterToggle editor(config, multi, nullptr);
        QSignalSpy changed(&editor, SIGNAL(filterChanged()));

        QToolButton unknown;
        QVERIFY(!editor.addButton(&unknown, QStringLiteral("medium")));
        QCOMPARE(log.lines(),
                 QStringList{QStringLiteral("3|WFixedMultiFilterToggle::addButton(): unknown filter kind medium")});

        QToolButton first;
        QToolButton second;
        QToolButton low;
        for (QToolButton *b : {&first, &second, &low})
            b->setCheckable(true);
        QVERIFY(editor.addButton(&first, QStringLiteral("high")));
        QVERIFY(editor.addButton(&low, QStringLiteral("low")));
        first.click();
        QVERIFY(isChecked(multi, QStringLiteral("high")));
        QCOMPARE(changed.count(), 1);

        // A replaced button stays connected but no longer finds itself.
        QVERIFY(editor.addButton(&second, QStringLiteral("high")));
        first.click();
        QVERIFY(isChecked(multi, QStringLiteral("high")));
        QCOMPARE(changed.count(), 1);
        second.click(); // checked -> the filter's state already: nothing to do
        QCOMPARE(changed.count(), 1);
        second.click();
        QVERIFY(!isChecked(multi, QStringLiteral("high")));
        QCOMPARE(changed.count(), 2);

        editor.setFilterState(QStringLiteral("low"), true, false);
        QVERIFY(isChecked(multi, QStringLiteral("low")));
        QCOMPARE(changed.count(), 2);
        editor.setFilterState(QStringLiteral("nothing"), true, true);
        QCOMPARE(changed.count(), 2);
    }

    void multiToggleLoadsAndCopies()
    {
        auto multi = priorities();
        WFixedMultiFilterToggle editor(WildcardConfig(), multi, nullptr);
        QToolButton high;
        high.setCheckable(true);
        editor.addButton(&high, QStringLiteral("high"));
        QSignalSpy changed(&editor, SIGNAL(filterChanged()));
        QString error;

        QVERIFY(!editor.setFilter(QSharedPointer<ValueFilter>(), false, error));
        QVERIFY(!editor.setFilter(fixed(QStringLiteral("high"), true, QStringLiteral("priority")), false, error));
        QVERIFY(!editor.setFilter(priorities({QStringLiteral("low"), QStringLiteral("high")}), false, error));
        QVERIFY(error.isEmpty());
        // The property is checked before anything else.
        QVERIFY(!editor.setFilter(fixed(QStringLiteral("x")), false, error));
        QVERIFY(error.contains(QStringLiteral("acknowledged")));

        auto shown = priorities();
        shown->findFixedFilter(QStringLiteral("high"))->setChecked(true);
        shown->findFixedFilter(QStringLiteral("low"))->setChecked(true);
        QVERIFY(editor.setFilter(shown, true, error));
        QVERIFY(high.isChecked());
        QVERIFY(isChecked(multi, QStringLiteral("high")) && isChecked(multi, QStringLiteral("low")));
        QVERIFY(multi->isMatchCase());
        QCOMPARE(changed.count(), 0);

        // A copy with its own case rule; the held filter keeps its own.
        const auto copy = editor.getFilter(false).dynamicCast<ValueFilterFixedMulti>();
        QVERIFY(copy && copy != multi);
        QVERIFY(!copy->isMatchCase());
        QVERIFY(multi->isMatchCase());
        copy->findFixedFilter(QStringLiteral("high"))->setChecked(false);
        QVERIFY(isChecked(multi, QStringLiteral("high")));
    }

    void textFilterClearButtonSignalsOnce()
    {
        WTextFilter edit;
        QVERIFY(!edit.isClearButtonEnabled());
        QSignalSpy cleared(&edit, SIGNAL(textCleared()));
        edit.enableClearButtonSignal();
        edit.enableClearButtonSignal();
        QVERIFY(edit.isClearButtonEnabled());
        edit.setText(QStringLiteral("abc"));
        // The button that the operator clicks carries the clear action.
        auto *button = edit.findChild<QToolButton *>();
        QVERIFY(button);
        button->click();
        QCOMPARE(cleared.count(), 1);
        QVERIFY(edit.text().isEmpty());
        // Typing is not clearing.
        QTest::keyClicks(&edit, QStringLiteral("x"));
        edit.clear();
        QCOMPARE(cleared.count(), 1);
    }
};

QTEST_MAIN(TestFilterWidgets)
#include "tst_filterwidgets.moc"
