#pragma once

#include <QObject>
#include <QStringList>
#include <QVector>

class QAbstractButton;
class QComboBox;
class FilterStatisticsView;
class QLabel;
class QTreeView;
class SourceAndFiltersUi;
class SourceUiLong;

// The operator's session that the end-to-end test plays in the running demo
// executable. It knows the demo only from the outside: the widgets on the
// screen, found by type, object name or text, and the exported component
// classes of the widget library.
class DemoScenario : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void contextMenuAcknowledgesAnAlarm();
    void structuredFilterIsAppliedSavedAndLoaded();
    void quickFilterShowsMatchingRows();
    void statisticsBarCountsTheTable();
    void unacknowledgedAlarmsBlink();
    void statisticsBarFollowsItsDatapoint();
    void disconnectedSystemStaysInTheTable();
    void historyQueryOverTwoSystems();
    void secondQueryIsAborted();
    void filterIsSavedAndLoadedBack();
    void tableIsExportedAsShown();
    void tabWalksTheWindowInGeometricOrder();
    void selectionSurvivesAFlood();
    void ruleEditorsFilterTheTable();

private:
    // The structured filter's steps (DemoScenarioStructuredFilter.cpp).
    void chooseFilterMenuEntry(QWidget *filterButton, const QString &entry);
    void answerMessageBox(QString *text);
    QStringList shownColumn(int column) const;
    QStringList shownRowTexts() const;
    // Whether each shown alarm of `system` is connected, in table order.
    QVector<bool> shownConnections(const QString &system) const;
    int columnOf(const QString &title) const;
    void applySource();
    void typeQuickFilter(const QString &text);
    void chooseSystems(const QStringList &systems);
    void chooseTimeRange(const QString &type, int count);
    QString stateText() const;
    void answerFileDialog(const QString &file);
    void answerCsvOptions(QChar separator, const QString &file);
    void answerContextMenu(const QString &entry);

    QWidget *m_window = nullptr;
    SourceAndFiltersUi *m_panel = nullptr;
    SourceUiLong *m_selector = nullptr;
    QTreeView *m_table = nullptr;
    QComboBox *m_modeCombo = nullptr;
    QAbstractButton *m_applyButton = nullptr;
    QAbstractButton *m_abortButton = nullptr;
    QAbstractButton *m_systemsButton = nullptr;
    QAbstractButton *m_timeRangeButton = nullptr;
    QLabel *m_stateLabel = nullptr;
    QLabel *m_timeLabel = nullptr;
    QLabel *m_countsLabel = nullptr;
    QString m_filterFile;
    QStringList m_menuEntries;
    bool m_menuAnswered = false;
    FilterStatisticsView *m_statisticsBar = nullptr;
};
