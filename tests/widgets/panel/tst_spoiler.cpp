#include "Spoiler.h"

#include <QLabel>
#include <QScrollArea>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

namespace {

// Lets the test move a handle as the operator's drag does.
class DragSplitter : public QSplitter
{
public:
    using QSplitter::QSplitter;
    using QSplitter::moveSplitter;
};

QLayout *contentOfHeight(int height)
{
    auto *layout = new QVBoxLayout;
    auto *label = new QLabel(QStringLiteral("content"));
    label->setFixedHeight(height);
    layout->addWidget(label);
    return layout;
}

} // namespace

class TestSpoiler : public QObject
{
    Q_OBJECT
private slots:
    void foldsAndUnfoldsItsContent()
    {
        Spoiler spoiler(QStringLiteral("Statistics"));
        spoiler.setAnimationDuration(50);
        QCOMPARE(spoiler.animationDuration(), 200);
        auto *toggle = spoiler.findChild<QToolButton *>();
        auto *animation = spoiler.findChild<QParallelAnimationGroup *>();
        auto *area = spoiler.findChild<QScrollArea *>();
        QVERIFY(toggle && animation && area);
        QCOMPARE(toggle->text(), QStringLiteral("Statistics"));

        // Without content a click only turns the arrow and records the state.
        toggle->click(); // checked at start: now folded
        QCOMPARE(toggle->arrowType(), Qt::RightArrow);
        QCOMPARE(spoiler.getWidgetVisibility(), UserSettings::AreaCollapsed);
        QCOMPARE(animation->state(), QAbstractAnimation::Stopped);
        QCOMPARE(area->maximumHeight(), 0);

        spoiler.setContentLayout(contentOfHeight(80));
        spoiler.show();
        QVERIFY(QTest::qWaitForWindowExposed(&spoiler));
        const int collapsed = spoiler.height();
        QSignalSpy finished(animation, &QAbstractAnimation::finished);
        QTest::mouseClick(toggle, Qt::LeftButton);
        QCOMPARE(toggle->arrowType(), Qt::DownArrow);
        QCOMPARE(spoiler.getWidgetVisibility(), UserSettings::AreaExpanded);
        QCOMPARE(animation->state(), QAbstractAnimation::Running);
        QVERIFY(finished.wait(2000));
        QCOMPARE(area->maximumHeight(), area->layout()->sizeHint().height());
        QVERIFY(area->layout()->sizeHint().height() >= 80);
        QTRY_COMPARE(spoiler.height(), collapsed + area->maximumHeight());

        QTest::mouseClick(toggle, Qt::LeftButton);
        QVERIFY(finished.wait(2000));
        QCOMPARE(area->maximumHeight(), 0);
        QTRY_COMPARE(spoiler.height(), collapsed);
    }

    void takesTheMainWidgetOutOfTheSplitterAndBack()
    {
        QWidget window;
        auto *layout = new QVBoxLayout(&window);
        auto *spoiler = new Spoiler(&window);
        auto *splitter = new DragSplitter(Qt::Vertical, &window);
        layout->addWidget(spoiler);
        layout->addWidget(splitter);
        auto *filterArea = new QLabel(QStringLiteral("filters"));
        auto *table = new QLabel(QStringLiteral("table"));
        splitter->addWidget(filterArea);
        splitter->addWidget(table);
        splitter->setChildrenCollapsible(true);
        window.resize(400, 400);
        window.show();

        QTest::ignoreMessage(QtWarningMsg, "Spoiler::isInSpoiler() is called while main widget is NULL");
        QVERIFY(!spoiler->isInSpoiler());

        spoiler->setMainWidget(filterArea, splitter, &window);
        QCOMPARE(spoiler->getWidgetVisibility(), UserSettings::AreaExpanded);
        // Dragging the handle to the top folds the filter area away.
        splitter->moveSplitter(0, 1);
        QCOMPARE(filterArea->height(), 0);
        QCOMPARE(spoiler->getWidgetVisibility(), UserSettings::AreaCollapsed);
        splitter->moveSplitter(150, 1);
        QCOMPARE(spoiler->getWidgetVisibility(), UserSettings::AreaExpanded);

        // Moving in twice moves once: one placeholder keeps the splitter's shape.
        spoiler->setInSpoiler(true);
        spoiler->setInSpoiler(true);
        QVERIFY(spoiler->isInSpoiler());
        QCOMPARE(splitter->count(), 2);
        QCOMPARE(splitter->widget(1), table);
        QVERIFY(splitter->widget(0) != filterArea && splitter->widget(0)->isHidden());
        QVERIFY(spoiler->isAncestorOf(filterArea));
        QVERIFY(spoiler->isVisible() && filterArea->isVisible());
        QVERIFY(spoiler->isExpanded());

        spoiler->setWidgetVisibility(UserSettings::AreaCollapsed);
        QVERIFY(!spoiler->isExpanded());
        spoiler->setWidgetVisibility(UserSettings::AreaHidden);
        QVERIFY(spoiler->isHidden() && filterArea->isHidden());
        spoiler->setWidgetVisibility(UserSettings::AreaExpanded);

        spoiler->setInSpoiler(false);
        QVERIFY(!spoiler->isInSpoiler());
        QCOMPARE(splitter->count(), 2);
        QCOMPARE(splitter->widget(0), filterArea);
        QVERIFY(filterArea->isVisible());
        QVERIFY(spoiler->isHidden());
    }
};

QTEST_MAIN(TestSpoiler)
#include "tst_spoiler.moc"
