#include "PopupFrame.h"

#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QtTest>

class TestPopupFrame : public QObject
{
    Q_OBJECT
private slots:
    void togglesBelowAnchor()
    {
        QWidget window;
        auto *layout = new QVBoxLayout(&window);
        auto *anchor = new QPushButton(QStringLiteral("anchor"));
        layout->addWidget(anchor);
        window.move(100, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        PopupFrame popup(&window);
        popup.resize(50, 40);

        popup.toggleVisibilityBelowWidget(anchor);
        QVERIFY(popup.isVisible());
        QCOMPARE(popup.pos(), anchor->mapToGlobal(QPoint(0, anchor->height())));

        popup.toggleVisibilityBelowWidget(anchor);
        QVERIFY(!popup.isVisible());
    }

    void staysInsideScreen_data()
    {
        QTest::addColumn<int>("anchorX");
        QTest::addColumn<bool>("clampedRight");
        const QRect area = QGuiApplication::primaryScreen()->geometry();
        QTest::newRow("left of screen") << area.left() - 150 << false;
        QTest::newRow("past right edge") << area.right() - 20 << true;
    }
    void staysInsideScreen()
    {
        QFETCH(int, anchorX);
        QFETCH(bool, clampedRight);
        const QRect area = QGuiApplication::primaryScreen()->geometry();

        QPushButton anchor(QStringLiteral("anchor"));
        anchor.setGeometry(anchorX, area.top() + 50, 200, 30);
        anchor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&anchor));

        PopupFrame popup;
        popup.resize(120, 60);
        popup.toggleVisibilityBelowWidget(&anchor);
        QVERIFY(popup.isVisible());
        QCOMPARE(popup.x(), clampedRight ? area.right() - popup.width() : area.left());
        QCOMPARE(popup.y(), anchor.mapToGlobal(QPoint(0, anchor.height())).y());
    }

    void neverShowsForMissingOrHiddenAnchor()
    {
        PopupFrame popup;
        popup.toggleVisibilityBelowWidget(nullptr);
        QVERIFY(!popup.isVisible());

        QPushButton hiddenAnchor;
        popup.toggleVisibilityBelowWidget(&hiddenAnchor);
        QVERIFY(!popup.isVisible());
    }
};

QTEST_MAIN(TestPopupFrame)
#include "tst_popupframe.moc"
