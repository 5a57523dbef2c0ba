#include "SysOracleArchive.h"
#include "SystemSelectionModel.h"
#include "SystemSelectionTable.h"

#include <QBrush>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

const QStringList Systems{"Dist1", "Dist2", "Plant_A", "Plant_B", "Sys10"};

struct Fixture {
    MsgLoggingProducer config;
    SystemSelectionTable table{&config};
    SystemSelectionModel *model = table.getModel();
    template <typename T> T *child(const char *name) const { return table.findChild<T *>(QLatin1String(name)); }
    void typeFilter(const QString &text)
    {
        auto *edit = child<QLineEdit>("lineEditFilter");
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Backspace);
        QTest::keyClicks(edit, text);
    }
    QStringList highlighted() const
    {
        QStringList result;
        for (int row = 0; row < model->rowCount(); ++row) {
            const QVariant background = model->index(row, 0).data(Qt::BackgroundRole);
            if (background.isValid()) {
                if (background.value<QBrush>().color() != QColor(Qt::cyan))
                    return {QStringLiteral("unexpected colour")};
                result << model->index(row, 0).data().toString();
            }
        }
        return result;
    }
    QStringList checked() const
    {
        QStringList result;
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked)
                result << model->index(row, 0).data().toString();
        }
        return result;
    }
    bool bulkButtonsEnabled() const
    {
        return child<QPushButton>("pushButtonSelectAll")->isEnabled()
               && child<QPushButton>("pushButtonUnselectAll")->isEnabled();
    }
};

} // namespace

class TestSystemSelection : public QObject
{
    Q_OBJECT
private slots:
    void init() { SysOracleArchive::getInstance()->setSystems(Systems); }

    void filterHighlightsExactMatches_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QStringList>("matching");
        QTest::newRow("empty") << QString() << QStringList();
        QTest::newRow("pattern") << "Plant_.*" << QStringList{"Plant_A", "Plant_B"};
        QTest::newRow("partial match is no match") << "Plant" << QStringList();
        QTest::newRow("exact name") << "Sys10" << QStringList{"Sys10"};
        QTest::newRow("invalid pattern") << "Dist(" << QStringList();
    }
    void filterHighlightsExactMatches()
    {
        QFETCH(QString, pattern);
        QFETCH(QStringList, matching);
        Fixture f;
        f.typeFilter(QStringLiteral("Dist.")); // start from a highlighted state
        QCOMPARE(f.highlighted(), (QStringList{"Dist1", "Dist2"}));
        QVERIFY(f.bulkButtonsEnabled());

        QSignalSpy backgrounds(f.model, &QAbstractItemModel::dataChanged);
        f.typeFilter(pattern);
        QVERIFY(!backgrounds.isEmpty());
        QCOMPARE(f.highlighted(), matching);
        QCOMPARE(f.child<QLabel>("labelMatching")->text(), QStringLiteral("Matching %1").arg(matching.size()));
        QCOMPARE(f.bulkButtonsEnabled(), !matching.isEmpty());
    }

    void checkingRows()
    {
        Fixture f;
        QSignalSpy selection(&f.table, &SystemSelectionTable::selectionChanged);
        const QModelIndex dist2 = f.model->index(1, 0);
        QVERIFY(f.model->setData(dist2, Qt::Checked, Qt::CheckStateRole));
        QVERIFY(f.model->setData(dist2, Qt::Checked, Qt::CheckStateRole)); // already checked: no signal
        QCOMPARE(selection.count(), 1);
        QCOMPARE(selection.at(0), (QVariantList{1, Systems.size()}));
        QCOMPARE(f.child<QLabel>("labelSelected")->text(), QStringLiteral("Selected 1/5"));
        QCOMPARE(f.table.getSelectedSystems(), QStringList{"Dist2"});

        QVERIFY(f.model->setData(dist2, Qt::PartiallyChecked, Qt::CheckStateRole)); // anything else unchecks
        QCOMPARE(f.table.getSelectedSystems(), QStringList());
        QCOMPARE(selection.count(), 2);

        QVERIFY(!f.model->setData(dist2, QStringLiteral("x"), Qt::EditRole));
        QVERIFY(!f.model->setData(QModelIndex(), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(selection.count(), 2);
    }

    void bulkSelectionAddsEachSystemOnce()
    {
        Fixture f;
        QVERIFY(f.model->setData(f.model->index(0, 0), Qt::Checked, Qt::CheckStateRole)); // Dist1
        QVERIFY(f.model->setData(f.model->index(2, 0), Qt::Checked, Qt::CheckStateRole)); // Plant_A
        QSignalSpy selection(&f.table, &SystemSelectionTable::selectionChanged);

        f.model->setSelection(true); // no pattern yet: nothing happens
        QCOMPARE(selection.count(), 0);

        f.typeFilter(QStringLiteral("Plant_.*"));
        auto *selectAll = f.child<QPushButton>("pushButtonSelectAll");
        QTest::mouseClick(selectAll, Qt::LeftButton);
        QTest::mouseClick(selectAll, Qt::LeftButton);
        QCOMPARE(selection.count(), 1);
        QCOMPARE(f.table.getSelectedSystems(), (QStringList{"Dist1", "Plant_A", "Plant_B"}));
        QCOMPARE(f.checked(), (QStringList{"Dist1", "Plant_A", "Plant_B"}));

        QTest::mouseClick(f.child<QPushButton>("pushButtonUnselectAll"), Qt::LeftButton);
        QCOMPARE(selection.count(), 2);
        QCOMPARE(selection.last(), (QVariantList{1, Systems.size()}));
        QCOMPARE(f.table.getSelectedSystems(), QStringList{"Dist1"});

        f.table.show();
        QTest::mouseClick(f.child<QPushButton>("pushButtonClose"), Qt::LeftButton);
        QVERIFY(!f.table.isVisible());
    }

    void unknownOrDuplicateNames()
    {
        Fixture f;
        QCOMPARE(f.table.setSelectedSystems({"Sys10"}), QString());
        QSignalSpy selection(&f.table, &SystemSelectionTable::selectionChanged);

        QCOMPARE(f.table.setSelectedSystems({"Dist1", "Nowhere"}), QStringLiteral("Unknwon system name: Nowhere"));
        QCOMPARE(f.table.getSelectedSystems(), QStringList{"Sys10"});
        QCOMPARE(f.table.setSelectedSystems({}), QString());
        QCOMPARE(f.table.getSelectedSystems(), QStringList{"Sys10"});
        QCOMPARE(selection.count(), 0);

        QCOMPARE(f.table.setSelectedSystems({"Dist2", "Dist1", "Dist2"}), QString());
        QCOMPARE(f.table.getSelectedSystems(), (QStringList{"Dist2", "Dist1"}));
        QCOMPARE(f.checked(), (QStringList{"Dist1", "Dist2"}));
        QCOMPARE(selection.count(), 1);
        QCOMPARE(selection.at(0), (QVariantList{2, Systems.size()}));
    }

    void initialSelectionYieldsToExplicitChoice()
    {
        Fixture f;
        QCOMPARE(f.table.setInitial({"Dist1"}), QString());
        QCOMPARE(f.table.setInitial({"Dist2"}), QString());
        QCOMPARE(f.table.getSelectedSystems(), QStringList{"Dist2"});
        QCOMPARE(f.table.setInitial({"Ghost"}), QStringLiteral("Unknwon system name: Ghost"));

        QVERIFY(f.model->setData(f.model->index(4, 0), Qt::Checked, Qt::CheckStateRole)); // the operator's choice
        QCOMPARE(f.table.setInitial({"Dist1"}), QString());
        QCOMPARE(f.table.getSelectedSystems(), (QStringList{"Dist2", "Sys10"}));
    }

    void systemListChangesUnderSelection()
    {
        Fixture f;
        QCOMPARE(f.table.setSelectedSystems({"Dist1", "Plant_A"}), QString());
        QSignalSpy selection(&f.table, &SystemSelectionTable::selectionChanged);
        QSignalSpy reset(f.model, &QAbstractItemModel::modelReset);

        SysOracleArchive::getInstance()->setSystems({"Dist1", "Dist3", "Plant_B"});
        QCOMPARE(reset.count(), 1);
        QCOMPARE(f.model->rowCount(), 3);
        QCOMPARE(f.table.getSelectedSystems(), QStringList{"Dist1"});
        QCOMPARE(f.checked(), QStringList{"Dist1"});
        QCOMPARE(selection.count(), 1);
        QCOMPARE(selection.at(0), (QVariantList{1, 3}));
        QCOMPARE(f.child<QLabel>("labelSelected")->text(), QStringLiteral("Selected 1/3"));

        SysOracleArchive::getInstance()->setSystems({});
        QCOMPARE(f.model->rowCount(), 0);
        QCOMPARE(f.table.getSelectedSystems(), QStringList());
        QVERIFY(!f.model->index(0, 0).data().isValid());
    }
};

QTEST_MAIN(TestSystemSelection)
#include "tst_systemselection.moc"
