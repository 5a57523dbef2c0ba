#pragma once

#include "ActionAccessUser.h"
#include "AlarmInstance.h"
#include "AlarmProp.h"
#include "CCodeExternData.h"
#include "CtrlBridge.h"
#include "MenuDescription.h"
#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QAtomicInt>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSharedPointer>
#include <QVariant>
#include <QVector>

class AlarmsProxyModel;
class MouseProcessorConfiguration;
class QModelIndex;
class QTreeView;

// Turns presses, clicks and double-clicks on cells of the alarm table into
// one argument list (the event, the row's alarm, the related alarm) for the
// owning widget (signal tableMouseEvent) or for a CTRL function of a
// configured library. A right-button press on a group node is handled here:
// a small menu expands or collapses all nodes.
//
// The CTRL function may answer with a context menu; a valid description is
// passed on with contextMenuRequested, for the owner to show.
class WIDGETS_EXPORT MouseEventProcessor : public QObject, public MsgLoggingProducer, public ActionAccessUser
{
    Q_OBJECT
public:
    enum EventType : int { Press = 0, Click = 1, DoubleClick = 2 };

    // One CTRL library used by processors, checked in once for all of them.
    class WIDGETS_EXPORT MouseCtrlLib : public MsgLoggingProducer
    {
    public:
        MouseCtrlLib(const MsgLoggingProducer *logger, const QString &library);
        bool isForLibrary(const QString &library) const { return library == m_library; }
        // Checks the library in on first use and after every failure.
        ScriptId getScriptId();

    private:
        QString m_library;
        ScriptId m_scriptId = -1;
        CCodeExternData m_externData;
    };

    MouseEventProcessor(const MsgLoggingProducer *logger, const ActionAccessUser *actionAccess,
                        QObject *parent = nullptr);
    ~MouseEventProcessor() override;

    void setConfig(const MouseProcessorConfiguration &config);
    void connectToTable(QTreeView *view);
    void setAlarmDataRole(Qt::ItemDataRole role);
    Qt::ItemDataRole getAlarmDataRole() const { return m_alarmDataRole; }

    // Library holders alive in the process.
    static int getCtrlLibCount() { return m_ctrlLibInstances.size(); }

signals:
    void tableMouseEvent(const QList<QVariant> &args);
    // A CTRL function's answer described a valid menu; `args` are the
    // arguments of the call.
    void contextMenuRequested(const QSharedPointer<MenuDescription> &menu, const QVariantList &args);

public slots:
    void tableCellPressed(const QModelIndex &index);
    void tableCellClicked(const QModelIndex &index);
    void tableCellDoubleClicked(const QModelIndex &index);
    void menuRequestes(const QSharedPointer<MenuDescription> &menu, const QVariantList &args);

protected:
    void processTableEvent(EventType type, const QModelIndex &index);
    void processTableEventForEwo(const QVariantList &args);
    void processTableEventByCtrl(const QVariantList &args);
    bool buildSourceArg(QVariantList &args, const QModelIndex &index, EventType type);
    bool buildAlarmArg(QVariantList &args, const QModelIndex &index);
    void addAlarmDataToArg(QList<QVariant> &args, const QVector<AlarmProp> &props,
                           const QSharedPointer<AlarmInstance> &alarm) const;
    static QVariantList buildRowValue(const QModelIndex &index);
    const AlarmsProxyModel *getAlarmsProxyModel(const QModelIndex &index);
    bool processGroupNodeEvent(EventType type, const QModelIndex &index);
    ScriptId loadCtrlLib();

private:
    QPointer<QTreeView> m_treeView;
    bool m_processByWidget = true;
    QString m_ctrlLibrary;
    QString m_ctrlFunction;
    Qt::ItemDataRole m_alarmDataRole = Qt::EditRole;

    static QAtomicInt m_instanceCount;
    static QList<QSharedPointer<MouseCtrlLib>> m_ctrlLibInstances;
};
