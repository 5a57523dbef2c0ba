// Tab and Shift+Tab inside the EWO: geometric order, tab groups, focus proxies,
// entering the EWO, and the key left to the host at the end.

#include "InEwoFocusProcessor.h"
#include "LogCapture.h"

#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

QLineEdit *edit(QWidget *parent, const char *name, int x, int y, int w = 50, int h = 20)
{
    auto *e = new QLineEdit(parent);
    e->setObjectName(QLatin1String(name));
    e->setGeometry(x, y, w, h);
    return e;
}

QWidget *container(QWidget *parent, const char *name, const QRect &geometry)
{
    auto *c = new QWidget(parent);
    c->setObjectName(QLatin1String(name));
    c->setGeometry(geometry);
    return c;
}

QString focusName()
{
    QWidget *focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QStringLiteral("(none)");
}

QStringList names(const InEwoFocusProcessor::WidgetRectCollection &collection)
{
    QStringList result;
    for (const auto *rect : collection.getRects())
        result << rect->getWidget()->objectName();
    return result;
}

} // namespace

class TestInEwoFocusProcessor : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        m_ewo.reset(new QWidget);
        m_ewo->setObjectName(QStringLiteral("ewo"));
        m_ewo->resize(400, 400);
        QWidget *ewo = m_ewo.data();
        // First row: b is to the right of a; c starts on a's bottom row, so it is below both.
        edit(ewo, "b", 70, 10);
        edit(ewo, "a", 10, 10);
        edit(ewo, "c", 10, 29);
        // A group holding a nested group; g3 lies below the nested group.
        m_group = container(ewo, "group", QRect(10, 60, 300, 130));
        m_nested = container(m_group, "nested", QRect(0, 40, 300, 50));
        edit(m_group, "g3", 0, 100);
        edit(m_nested, "n2", 100, 0);
        edit(m_nested, "n1", 0, 0);
        edit(m_group, "g2", 100, 0);
        edit(m_group, "g1", 0, 0);
        edit(ewo, "d", 10, 200);
        // Focus goes through proxy to f, which sits at the bottom.
        QWidget *proxyHolder = edit(ewo, "proxyHolder", 200, 200);
        proxyHolder->setFocusProxy(edit(ewo, "f", 10, 300));
        // Never targets.
        edit(ewo, "disabled", 200, 10)->setEnabled(false);
        edit(ewo, "hidden", 200, 30)->hide();
        auto *label = new QLabel(QStringLiteral("label"), ewo);
        label->setGeometry(300, 10, 50, 20);
        auto *sub = new QWidget(ewo, Qt::SubWindow);
        sub->setObjectName(QStringLiteral("subWindow"));
        sub->setFocusPolicy(Qt::StrongFocus);
        sub->setGeometry(300, 300, 50, 20);

        m_log.reset(new LogCapture);
        m_processor = new InEwoFocusProcessor(&m_log->producer, ewo);
        m_processor->addTabGroup(m_group);
        m_processor->addTabGroup(m_nested);
        m_ewo->show();
        QVERIFY(QTest::qWaitForWindowActive(m_ewo.data()));
    }

    void cleanup() { m_ewo.reset(); }

    void candidatesInGeometricOrder()
    {
        const InEwoFocusProcessor::WidgetRectCollection all(&m_log->producer, m_ewo.data());
        QCOMPARE(names(all), (QStringList{"a", "b", "c", "g1", "g2", "n1", "n2", "g3", "d", "f"}));
        QVERIFY(!InEwoFocusProcessor::widgetCanAcceptFocus(m_ewo.data(), m_ewo.data()));
        QVERIFY(InEwoFocusProcessor::widgetCanAcceptFocus(m_ewo->findChild<QWidget *>("proxyHolder"), m_ewo.data()));

        // An outsider is refused as a tab group.
        QWidget outsider;
        m_processor->addTabGroup(&outsider);
        QVERIFY(m_log->lines().contains(
            QStringLiteral("2|attempt to addTabGroup() where widget is not descendant of m_ewoWidget")));
    }

    void tabWalksTheGroupsAsUnits()
    {
        m_ewo->findChild<QWidget *>("a")->setFocus();
        QStringList forward{focusName()};
        for (int i = 0; i < 9; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            forward << focusName();
        }
        // g2 goes on to g3 of its own group; the nested group, once done,
        // hands over to what follows it outside, not back to g3.
        QCOMPARE(forward, (QStringList{"a", "b", "c", "g1", "g2", "g3", "n1", "n2", "d", "f"}));

        // The last widget: no move, and the key is not consumed but left to the host.
        QVERIFY(!m_processor->focusNextPrevEwoWidget(true));
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QVERIFY(!m_processor->eventFilter(QApplication::focusWidget(), &tab));
        QCOMPARE(focusName(), QStringLiteral("f"));

        QStringList backward{focusName()};
        for (int i = 0; i < 9; ++i) {
            QTest::keyClick(QApplication::focusWidget(), i % 2 ? Qt::Key_Backtab : Qt::Key_Tab,
                            i % 2 ? Qt::NoModifier : Qt::ShiftModifier);
            backward << focusName();
        }
        // Backwards a group is entered at its last member.
        QCOMPARE(backward, (QStringList{"f", "d", "n2", "n1", "g3", "g2", "g1", "c", "b", "a"}));
        QVERIFY(!m_processor->focusNextPrevEwoWidget(false));

        // Focus outside the EWO: nothing to do.
        QLineEdit outside;
        outside.show();
        QVERIFY(QTest::qWaitForWindowActive(&outside));
        outside.setFocus();
        QVERIFY(!m_processor->focusNextPrevEwoWidget(true));
    }

    void enteringTheEwo()
    {
        QFocusEvent tabIn(QEvent::FocusIn, Qt::TabFocusReason);
        QVERIFY(m_processor->processEwoFocusIn(&tabIn));
        QCOMPARE(focusName(), QStringLiteral("a"));
        QFocusEvent backtabIn(QEvent::FocusIn, Qt::BacktabFocusReason);
        QVERIFY(m_processor->processEwoFocusIn(&backtabIn));
        QCOMPARE(focusName(), QStringLiteral("f"));

        // Coming back to the window returns to the widget last used.
        m_ewo->findChild<QWidget *>("n1")->setFocus();
        m_ewo->findChild<QWidget *>("c")->setFocus();
        QApplication::focusWidget()->clearFocus();
        QCOMPARE(focusName(), QStringLiteral("(none)"));
        QFocusEvent other(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QVERIFY(m_processor->processEwoFocusIn(&other));
        QCOMPARE(focusName(), QStringLiteral("c"));
        // ... unless it can no longer take focus: then the first one.
        QApplication::focusWidget()->clearFocus();
        m_ewo->findChild<QWidget *>("c")->setEnabled(false);
        QVERIFY(m_processor->processEwoFocusIn(&other));
        QCOMPARE(focusName(), QStringLiteral("a"));

        // A mouse click decides for itself.
        m_ewo->findChild<QWidget *>("d")->setFocus();
        QFocusEvent mouse(QEvent::FocusIn, Qt::MouseFocusReason);
        QVERIFY(!m_processor->processEwoFocusIn(&mouse));
        QCOMPARE(focusName(), QStringLiteral("d"));
    }

private:
    QScopedPointer<QWidget> m_ewo;
    QScopedPointer<LogCapture> m_log;
    InEwoFocusProcessor *m_processor = nullptr;
    QWidget *m_group = nullptr;
    QWidget *m_nested = nullptr;
};

QTEST_MAIN(TestInEwoFocusProcessor)
#include "tst_inewofocusprocessor.moc"
