#include "DialogLogHistory.h"
#include "MsgLoggerColoredModel.h"
#include "MsgLoggerModel.h"
#include "MsgLoggerStatistics.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

namespace {

QColor background(const QWidget &label)
{
    return label.autoFillBackground() ? label.palette().color(label.backgroundRole()) : QColor();
}

QPushButton *button(DialogLogHistory *dialog, QDialogButtonBox::StandardButton which)
{
    return dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(which);
}

} // namespace

class TestLogViews : public QObject
{
    Q_OBJECT
private slots:
    void labelCountsAndTakesTheWorstColour()
    {
        const QColor yellow(255, 255, 192), red(255, 192, 192);
        auto model = QSharedPointer<MsgLoggerModel>::create();
        MsgLoggerStatistics label;
        QCOMPARE(label.text(), QStringLiteral("Messages: 0"));
        QVERIFY(!background(label).isValid());
        label.setModel(model);

        model->addMessage(MsgLoggerEnums::DetailedTrace, QString(), QStringLiteral("t"));
        QCOMPARE(label.text(), QStringLiteral("Messages: 1"));
        QVERIFY(!background(label).isValid()); // traces have no colour
        model->addMessage(MsgLoggerEnums::Warning, QString(), QStringLiteral("w"));
        QCOMPARE(background(label), yellow);
        model->addMessage(MsgLoggerEnums::Error, QString(), QStringLiteral("e"));
        model->addMessage(MsgLoggerEnums::Trace, QString(), QStringLiteral("t"));
        QCOMPARE(label.text(), QStringLiteral("Messages: 4"));
        QCOMPARE(background(label), red);
        model->clear();
        QCOMPARE(label.text(), QStringLiteral("Messages: 0"));
        QVERIFY(!background(label).isValid());
        // No messages, no colour, whatever the severity says.
        label.contentChanged(0, MsgLoggerEnums::Error);
        QVERIFY(!background(label).isValid());

        // Only the label's own model is followed.
        auto other = QSharedPointer<MsgLoggerModel>::create();
        label.setModel(other);
        model->addMessage(MsgLoggerEnums::Warning, QString(), QStringLiteral("w"));
        QCOMPARE(label.text(), QStringLiteral("Messages: 0"));
    }

    void eachErrorIsAnnouncedOnce()
    {
        auto model = QSharedPointer<MsgLoggerModel>::create();
        MsgLoggerStatistics label;
        label.setModel(model);
        QSignalSpy critical(&label, &MsgLoggerStatistics::criticalMessage);
        model->addMessage(MsgLoggerEnums::Error, QString(), QStringLiteral("pump 3 failed"));
        QCOMPARE(critical.size(), 1);
        QCOMPARE(critical.at(0).at(0).toString(), QStringLiteral("pump 3 failed"));
        // The worst is still the same error.
        model->addMessage(MsgLoggerEnums::Warning, QString(), QStringLiteral("w"));
        label.contentChanged(model->rowCount(), MsgLoggerEnums::Error);
        QCOMPARE(critical.size(), 1);

        const QDateTime first = model->data(model->index(0, MsgLoggerModel::TimeColumn), Qt::EditRole).toDateTime();
        QTRY_VERIFY(QDateTime::currentDateTime() > first);
        model->addMessage(MsgLoggerEnums::Error, QString(), QStringLiteral("pump 4 failed"));
        QCOMPARE(critical.size(), 2);
        QCOMPARE(critical.at(1).at(0).toString(), QStringLiteral("pump 4 failed"));
    }

    void historyIsColouredAndResettable()
    {
        auto model = QSharedPointer<MsgLoggerModel>::create();
        model->addMessage(MsgLoggerEnums::Trace, QStringLiteral("src"), QStringLiteral("trace"));
        model->addMessage(MsgLoggerEnums::Warning, QStringLiteral("src"), QStringLiteral("warning"));
        model->addMessage(MsgLoggerEnums::Error, QStringLiteral("src"), QStringLiteral("error"));
        MsgLoggerStatistics label;
        label.setModel(model);

        QTest::mouseClick(&label, Qt::LeftButton);
        QPointer<DialogLogHistory> dialog = label.getDialog();
        QVERIFY(dialog && dialog->isVisible());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Log message history"));
        QTest::mouseClick(&label, Qt::LeftButton);
        QCOMPARE(label.getDialog(), dialog.data()); // still the one dialog

        const QAbstractItemModel *shown = dialog->getView()->model();
        QCOMPARE(shown->rowCount(), 3);
        QCOMPARE(dialog->getCounter()->text(), QStringLiteral("Total: 3"));
        QMap<QString, QVariant> colourOf;
        for (int row = 0; row < 3; ++row) {
            const QString text = shown->index(row, MsgLoggerModel::TextColumn).data().toString();
            colourOf.insert(text, shown->index(row, MsgLoggerModel::SeverityColumn).data(Qt::BackgroundRole));
            QVERIFY(!shown->index(row, MsgLoggerModel::TextColumn).data(Qt::BackgroundRole).isValid());
        }
        QVERIFY(!colourOf.value("trace").isValid());
        QCOMPARE(colourOf.value("warning").value<QBrush>(), QBrush(QColor(255, 255, 192)));
        QCOMPARE(colourOf.value("error").value<QBrush>(), QBrush(QColor(255, 192, 192)));
        // Sorted by the messages' values: severities as numbers, not names.
        dialog->getView()->sortByColumn(MsgLoggerModel::SeverityColumn, Qt::AscendingOrder);
        QCOMPARE(shown->index(0, MsgLoggerModel::TextColumn).data().toString(), QStringLiteral("trace"));
        QCOMPARE(shown->index(2, MsgLoggerModel::TextColumn).data().toString(), QStringLiteral("error"));

        model->addMessage(MsgLoggerEnums::Warning, QString(), QStringLiteral("live"));
        QCOMPARE(dialog->getCounter()->text(), QStringLiteral("Total: 4"));
        QTest::mouseClick(button(dialog, QDialogButtonBox::Reset), Qt::LeftButton);
        QCOMPARE(model->rowCount(), 0);
        QCOMPARE(shown->rowCount(), 0);
        QCOMPARE(dialog->getCounter()->text(), QStringLiteral("Total: 0"));
        QCOMPARE(label.text(), QStringLiteral("Messages: 0"));
        QVERIFY(dialog->isVisible());

        // Closed, the dialog goes; the next click brings a new one.
        QTest::mouseClick(button(dialog, QDialogButtonBox::Close), Qt::LeftButton);
        QTRY_VERIFY(!dialog);
        QVERIFY(!label.getDialog());
        QTest::mouseClick(&label, Qt::LeftButton);
        QVERIFY(label.getDialog() && label.getDialog()->isVisible());
    }

    void floodKeepsTheHistoryBounded()
    {
        // The bound of the message model that the demo and the owners use.
        auto model = QSharedPointer<MsgLoggerModel>::create();
        QCOMPARE(model->getMaxMessages(), 1000);
        MsgLoggerStatistics label;
        label.setModel(model);
        QTest::mouseClick(&label, Qt::LeftButton);
        DialogLogHistory *dialog = label.getDialog();
        QVERIFY(dialog);

        // Ten seconds' worth of a flood of 1000 messages a second.
        constexpr int Total = 10000;
        for (int i = 0; i < Total; ++i) {
            const auto severity = MsgLoggerEnums::LogSeverity(i % 7 == 0 ? 2 : i % 2);
            model->addMessage(severity, QStringLiteral("flood"), QStringLiteral("message %1").arg(i));
            if (i % 100 == 99)
                QCoreApplication::processEvents();
        }
        QCOMPARE(model->rowCount(), 1000);
        QCOMPARE(dialog->getView()->model()->rowCount(), 1000);
        QCOMPARE(dialog->getCounter()->text(), QStringLiteral("Total: 1000"));
        QCOMPARE(label.text(), QStringLiteral("Messages: 1000"));
        QCOMPARE(background(label), QColor(255, 255, 192));
        // The oldest went first.
        QCOMPARE(model->index(0, MsgLoggerModel::TextColumn).data().toString(), QStringLiteral("message 9000"));
        QCOMPARE(model->index(999, MsgLoggerModel::TextColumn).data().toString(), QStringLiteral("message 9999"));

        // An owner that wants less history gets it at once, in both views.
        model->setMaxMessages(400);
        QCOMPARE(dialog->getCounter()->text(), QStringLiteral("Total: 400"));
        QCOMPARE(label.text(), QStringLiteral("Messages: 400"));
    }
};

QTEST_MAIN(TestLogViews)
#include "tst_logviews.moc"
