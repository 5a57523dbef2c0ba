// CSV export of the alarm table: what is written for all and selected rows,
// with grouping columns and escaping; the options dialog; and what a failed
// or cancelled export leaves behind.

#include "AlarmTestFactory.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "ExportCsvOptions.h"
#include "ExporterCSV.h"
#include "LogCapture.h"
#include "PopupAnswers.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>
#include <QtTest>

using namespace AlarmTestFactory;

namespace {

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

// Grouped by system and alarm class; the view shows System, Empty (a column
// naming no alarm property) and Text, in that order, and hides Prio.
struct Table
{
    Table()
    {
        model->setAlarms(alarms());
        proxy.setColumns({ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("text"), QStringLiteral("Text")),
                          ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("priority"), QStringLiteral("Prio")),
                          ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("nosuch"), QStringLiteral("Empty")),
                          ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("system"), QStringLiteral("System"))});
        proxy.setAlarmsModel(model);
        proxy.setGrouping(grouping({QStringLiteral("system"), QStringLiteral("alarmClass")}));
        view.setModel(&proxy);
        view.header()->moveSection(3, 0);
        view.header()->moveSection(3, 1);
        view.setColumnHidden(1, true);
    }

    static QVector<AlarmInstancePtr> alarms()
    {
        return {makeAlarm(QStringLiteral("SysA"), 1, 100, QStringLiteral("a;b, c"), 3000),
                makeAlarm(QStringLiteral("SysA"), 2, 10, QStringLiteral("plain"), 2000),
                makeAlarm(QStringLiteral("SysB"), 3, 200, QStringLiteral("back\\slash \"q\""), 1000)};
    }

    QString exportText(ExporterCSV &exporter, bool allRows, bool header, bool grouping,
                       const QStringList &columns = {}, bool *ok = nullptr)
    {
        QString text;
        QTextStream stream(&text);
        const bool result = exporter.exportToCsv(stream, &view, proxy.getGroupingDepth(), allRows, header, grouping,
                                                 columns);
        if (ok)
            *ok = result;
        stream.flush();
        return text;
    }

    LogCapture log;
    QSharedPointer<AlarmsModel> model = QSharedPointer<AlarmsModel>::create();
    AlarmsProxyModel proxy{&log.producer};
    QTreeView view;
};

const QString expectedAll = QStringLiteral(";;System;Empty;Text\n"
                                           "SysA;alert;SysA;;a\\;b, c\n"
                                           "SysA;warning;SysA;;plain\n"
                                           "SysB;alert;SysB;;back\\slash \"q\"\n");

} // namespace

class TestExporterCSV : public QObject
{
    Q_OBJECT
private slots:
    void writesTheRowsOfTheTable()
    {
        Table t;
        ExporterCSV exporter(&t.log.producer);
        exporter.setSeparatorCSV(QStringLiteral(";"));
        // Every group is collapsed: all rows are written all the same.
        bool ok = false;
        QCOMPARE(t.exportText(exporter, true, true, true, {}, &ok), expectedAll);
        QVERIFY(ok);

        // With a comma nothing in these fields needs escaping but the comma itself.
        exporter.setSeparatorCSV(QStringLiteral(","));
        QCOMPARE(t.exportText(exporter, true, false, false, {QStringLiteral("Text"), QStringLiteral("System")}),
                 QStringLiteral("a;b\\, c,SysA\nplain,SysA\nback\\slash \"q\",SysB\n"));

        // Selected rows in table order, whatever the order of selecting; a
        // selected group stands for the rows below it.
        const QModelIndex sysB = t.proxy.index(1, 0);
        const QModelIndex warning = t.proxy.index(1, 0, t.proxy.index(0, 0));
        QItemSelectionModel *selection = t.view.selectionModel();
        selection->select(sysB, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        selection->select(t.proxy.index(0, 0, warning), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        QCOMPARE(t.exportText(exporter, false, false, true, {QStringLiteral("Prio")}),
                 QStringLiteral("SysA,warning,10\nSysB,alert,200\n"));

        QCOMPARE(t.exportText(exporter, true, true, false, {QStringLiteral("Text"), QStringLiteral("Nope")}, &ok),
                 QString());
        QVERIFY(!ok);
        QCOMPARE(exporter.getLastError(), QStringLiteral("unknown column title 'Nope' for exporting to CSV"));
    }

    void separatorIsOneCharacter()
    {
        LogCapture log;
        ExporterCSV exporter(&log.producer);
        exporter.setSeparatorCSV(QStringLiteral("|"));
        exporter.setSeparatorCSV(QString());
        exporter.setSeparatorCSV(QStringLiteral(";;"));
        QCOMPARE(exporter.getSeparator(), QLatin1Char('|'));
        const QString refused = QStringLiteral("2|CSV separator must be exactly 1 character long");
        QCOMPARE(log.lines(), (QStringList{refused, refused}));
    }

    void failedExportsLeaveTheOldFile()
    {
        Table t;
        ExporterCSV exporter(&t.log.producer);
        exporter.setSeparatorCSV(QStringLiteral(";"));
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString target = dir.filePath(QStringLiteral("alarms.csv"));
        QVERIFY(writeFile(target, "old content\n"));

        // Cancelled after the first row.
        int asked = 0;
        exporter.setProgressHandler([&asked](int) { return ++asked < 2; }, 1);
        QVERIFY(!exporter.exportToCsv(&t.view, 2, target, true, true, true, {}));
        QCOMPARE(asked, 2);
        QCOMPARE(exporter.getLastError(), QStringLiteral("export cancelled by the operator"));
        QCOMPARE(readFile(target), QByteArray("old content\n"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("alarms.csv")});

        // New alarms arrive while the progress dialog lets events through.
        exporter.setProgressHandler(
            [&t](int) {
                t.model->setAlarms({makeAlarm(QStringLiteral("SysC"), 9, 10, QStringLiteral("new"), 9000)});
                return true;
            },
            1);
        QVERIFY(!exporter.exportToCsv(&t.view, 2, target, true, true, true, {}));
        QCOMPARE(exporter.getLastError(), QStringLiteral("the table changed during the export"));
        QCOMPARE(readFile(target), QByteArray("old content\n"));
        t.model->setAlarms(Table::alarms());

        // A good export replaces it.
        exporter.setProgressHandler(nullptr);
        QVERIFY2(exporter.exportToCsv(&t.view, 2, target, true, true, true, {}), qPrintable(exporter.getLastError()));
        QCOMPARE(QString::fromUtf8(readFile(target)), expectedAll);

        // No view, no model: nothing is written.
        QTreeView empty;
        QVERIFY(!exporter.exportToCsv(&empty, 0, target, true, true, false, {}));
        QCOMPARE(exporter.getLastError(), QStringLiteral("tree view without model passed to exportToCsv() method"));
        QVERIFY(!exporter.exportToCsv(nullptr, 0, target, true, true, false, {}));
        QCOMPARE(exporter.getLastError(), QStringLiteral("NULL tree view passed to exportToCsv() method"));
        QCOMPARE(QString::fromUtf8(readFile(target)), expectedAll);

        // A full device: the error shows when the data reach it.
        if (QFileInfo::exists(QStringLiteral("/dev/full"))) {
            QVERIFY(!exporter.exportToCsv(&t.view, 2, QStringLiteral("/dev/full"), true, true, true, {}));
            QVERIFY2(exporter.getLastError().startsWith(QLatin1String("writing to file failed: "))
                         && exporter.getLastError().size() > 24,
                     qPrintable(exporter.getLastError()));
            QVERIFY(!QFileInfo(QStringLiteral("/dev/full")).isFile()); // still the device
        }

        // A directory that cannot be created: its parent is a regular file.
        const QString belowFile = target + QStringLiteral("/x.csv");
        QVERIFY(!exporter.exportToCsv(&t.view, 2, belowFile, true, true, true, {}));
        QVERIFY2(exporter.getLastError().startsWith(QLatin1String("failed to open file for writing: error "))
                     && exporter.getLastError().endsWith(QLatin1String(" for file ") + belowFile),
                 qPrintable(exporter.getLastError()));
        QCOMPARE(QString::fromUtf8(readFile(target)), expectedAll);

        // A read-only directory holding an old file.
        const QString readOnly = dir.filePath(QStringLiteral("ro"));
        QVERIFY(QDir().mkpath(readOnly));
        const QString old = readOnly + QStringLiteral("/alarms.csv");
        QVERIFY(writeFile(old, "old content\n"));
        QFile::setPermissions(readOnly, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        QFile probe(readOnly + QStringLiteral("/probe"));
        const bool writable = probe.open(QIODevice::WriteOnly);
        if (writable)
            probe.remove();
        else
            QVERIFY(!exporter.exportToCsv(&t.view, 2, old, true, true, true, {}));
        QFile::setPermissions(readOnly, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        if (writable)
            QSKIP("permissions do not bind this user (root): a read-only directory is still writable; the path "
                  "below a regular file above stands for a directory that cannot be written");
        QVERIFY2(exporter.getLastError().startsWith(QLatin1String("failed to open file for writing: error ")),
                 qPrintable(exporter.getLastError()));
        QCOMPARE(readFile(old), QByteArray("old content\n"));
        QCOMPARE(QDir(readOnly).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("alarms.csv")});
    }

    void optionsDialog()
    {
        ExportCsvOptions options;
        // Without a selection only all rows can be exported; an empty
        // separator cannot be confirmed.
        bool selectedEnabled = true;
        bool okWithoutSeparator = true;
        answerNextModal<QDialog>(this, [&](QDialog *dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Options for export to CSV"));
            selectedEnabled = dialog->findChild<QRadioButton *>(QStringLiteral("radioButtonSelectedRows"))->isEnabled();
            auto *separator = dialog->findChild<QLineEdit *>(QStringLiteral("lineEditSeparator"));
            QCOMPARE(separator->text(), QStringLiteral(";"));
            separator->clear();
            okWithoutSeparator = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->isEnabled();
            dialog->reject();
        });
        QVERIFY(!options.getOptions(QStringLiteral(";"), false));
        QVERIFY(!selectedEnabled);
        QVERIFY(!okWithoutSeparator);
        QCOMPARE(options.getSeparator(), QStringLiteral(","));

        answerNextModal<QDialog>(this, [](QDialog *dialog) {
            dialog->findChild<QRadioButton *>(QStringLiteral("radioButtonSelectedRows"))->setChecked(true);
            dialog->findChild<QCheckBox *>(QStringLiteral("checkBoxHeader"))->setChecked(false);
            dialog->findChild<QCheckBox *>(QStringLiteral("checkBoxGrouping"))->setChecked(true);
            dialog->findChild<QLineEdit *>(QStringLiteral("lineEditSeparator"))->setText(QStringLiteral("\t"));
            dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        QVERIFY(options.getOptions(QStringLiteral(","), true));
        QVERIFY(!options.isAllRows() && !options.isHeader() && options.isGrouping());
        QCOMPARE(options.getSeparator(), QStringLiteral("\t"));
    }
};

QTEST_MAIN(TestExporterCSV)
#include "tst_exportercsv.moc"
