#include "FlowLayout.h"

#include <QProxyStyle>
#include <QtTest>

namespace {

QWidget *fixedWidget(QWidget *parent, int width, int height)
{
    auto *widget = new QWidget(parent);
    widget->setFixedSize(width, height);
    return widget;
}

// A style with distinct spacings, to tell which one the layout took.
class SpacingStyle : public QProxyStyle
{
public:
    int layoutSpacing(QSizePolicy::ControlType, QSizePolicy::ControlType,
                      Qt::Orientation orientation, const QStyleOption * = nullptr,
                      const QWidget * = nullptr) const override
    {
        return orientation == Qt::Horizontal ? 7 : 11;
    }
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override
    {
        if (metric == PM_LayoutHorizontalSpacing)
            return 2;
        if (metric == PM_LayoutVerticalSpacing)
            return 3;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
};

} // namespace

class TestFlowLayout : public QObject
{
    Q_OBJECT
private slots:
    void emptyLayoutIsItsMargins()
    {
        FlowLayout layout(5, 4, 3);
        QCOMPARE(layout.heightForWidth(100), 10);
        QVERIFY(!layout.itemAt(0));
        QVERIFY(!layout.takeAt(-1));
    }

    // Margin 5, spacings 4 and 3, items 40 x 20: three items need a right edge
    // at 133, that is a width of 139.
    void fittingAndWrapping_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QList<QPoint>>("positions");
        QTest::addColumn<int>("height");
        QTest::newRow("one row") << 139 << QList<QPoint>{{5, 5}, {49, 5}, {93, 5}} << 30;
        QTest::newRow("third wraps") << 138 << QList<QPoint>{{5, 5}, {49, 5}, {5, 28}} << 53;
        QTest::newRow("one per row") << 50 << QList<QPoint>{{5, 5}, {5, 28}, {5, 51}} << 76;
    }
    void fittingAndWrapping()
    {
        QFETCH(int, width);
        QFETCH(QList<QPoint>, positions);
        QFETCH(int, height);
        QWidget parent;
        auto *layout = new FlowLayout(&parent, 5, 4, 3);
        QList<QWidget *> widgets;
        for (int i = 0; i < positions.size(); ++i) {
            widgets << fixedWidget(&parent, 40, 20);
            layout->addWidget(widgets.last());
        }
        QCOMPARE(layout->heightForWidth(width), height);
        QCOMPARE(widgets.first()->pos(), QPoint(0, 0)); // measuring moves nothing
        layout->setGeometry(QRect(0, 0, width, 200));
        for (int i = 0; i < positions.size(); ++i)
            QCOMPARE(widgets.at(i)->geometry(), QRect(positions.at(i), QSize(40, 20)));
    }

    void overWideItemStandsAlone()
    {
        QWidget parent;
        auto *layout = new FlowLayout(&parent, 0, 4, 3);
        QWidget *small = fixedWidget(&parent, 40, 20);
        QWidget *wide = fixedWidget(&parent, 300, 10);
        QWidget *last = fixedWidget(&parent, 40, 20);
        layout->addWidget(small);
        layout->addWidget(wide);
        layout->addWidget(last);
        layout->setGeometry(QRect(0, 0, 100, 100));
        QCOMPARE(small->pos(), QPoint(0, 0));
        QCOMPARE(wide->geometry(), QRect(0, 23, 300, 10));
        QCOMPARE(last->pos(), QPoint(0, 36));
        QCOMPARE(layout->heightForWidth(100), 56);
        // Alone in a layout it is placed at once, not pushed to a second line.
        const QScopedPointer<QLayoutItem> first(layout->takeAt(0));
        const QScopedPointer<QLayoutItem> third(layout->takeAt(1));
        QVERIFY(first && third);
        QCOMPARE(layout->count(), 1);
        QCOMPARE(layout->heightForWidth(100), 10);
    }

    void spacingFromTheStyle()
    {
        SpacingStyle style;
        // Without a parent every item asks its own widget's style.
        QWidget holder;
        FlowLayout loose(0, -1, -1);
        QWidget *a = fixedWidget(&holder, 40, 20);
        QWidget *b = fixedWidget(&holder, 40, 20);
        a->setStyle(&style);
        b->setStyle(&style);
        loose.addWidget(a);
        loose.addWidget(b);
        loose.setGeometry(QRect(0, 0, 88, 100));
        QCOMPARE(b->pos(), QPoint(47, 0));
        loose.setGeometry(QRect(0, 0, 87, 100));
        QCOMPARE(b->pos(), QPoint(0, 31));

        // With a parent widget, the parent's style metrics rule.
        QWidget parent;
        parent.setStyle(&style);
        auto *layout = new FlowLayout(&parent, 0, -1, -1);
        QCOMPARE(layout->horizontalSpacing(), 2);
        QCOMPARE(layout->verticalSpacing(), 3);
    }

    void minimumSizeIsTheLargestItemPlusMargins()
    {
        QWidget parent;
        auto *layout = new FlowLayout(&parent, 5, 4, 3);
        layout->addWidget(fixedWidget(&parent, 40, 30));
        layout->addWidget(fixedWidget(&parent, 200, 10));
        QCOMPARE(layout->minimumSize(), QSize(210, 40));
        QCOMPARE(layout->sizeHint(), QSize(210, 40));
    }
};

QTEST_MAIN(TestFlowLayout)
#include "tst_flowlayout.moc"
