#include "MouseEventProcessor.h"

#include "AlarmsProxyModel.h"
#include "DynVar.h"
#include "EwoActions.h"
#include "MouseEventDoneCb.h"
#include "MouseProcessorConfiguration.h"
#include "converter.h"

#include <QAction>
#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QTreeView>

#include <memory>

QAtomicInt MouseEventProcessor::m_instanceCount;
QList<QSharedPointer<MouseEventProcessor::MouseCtrlLib>> MouseEventProcessor::m_ctrlLibInstances;

MouseEventProcessor::MouseCtrlLib::MouseCtrlLib(const MsgLoggingProducer *logger, const QString &library)
    : MsgLoggingProducer(logger), m_library(library), m_externData("MouseEventProcessor", "MouseEventProcessor")
{
}

ScriptId MouseEventProcessor::MouseCtrlLib::getScriptId()
{
    if (m_scriptId >= 0)
        return m_scriptId;
    if (m_library.isEmpty()) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("Empty CTRL library for MouseEventProcessor"));
        return m_scriptId;
    }
    const QString script = CtrlBridge::usesScript(m_library);
    m_scriptId = CtrlBridge::checkIn(script, m_externData);
    if (m_scriptId < 0) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Failed to check in script, returned value ") + QString::number(m_scriptId) +
                  QStringLiteral(", script: ") + script);
    }
    return m_scriptId;
}

MouseEventProcessor::MouseEventProcessor(const MsgLoggingProducer *logger, const ActionAccessUser *actionAccess,
                                         QObject *parent)
    : QObject(parent), MsgLoggingProducer(logger), ActionAccessUser(actionAccess)
{
    qRegisterMetaType<QSharedPointer<MenuDescription>>("QSharedPointer<MenuDescription>");
    m_instanceCount.ref();
}

MouseEventProcessor::~MouseEventProcessor()
{
    if (!m_instanceCount.deref())
        m_ctrlLibInstances.clear();
}

void MouseEventProcessor::setConfig(const MouseProcessorConfiguration &config)
{
    m_processByWidget = config.isProcessByWidget();
    m_ctrlLibrary = config.getCtrlLibrary();
    m_ctrlFunction = config.getCtrlFunction();
}

void MouseEventProcessor::connectToTable(QTreeView *view)
{
    m_treeView = view;
    if (!view)
        return;
    connect(view, &QAbstractItemView::pressed, this, &MouseEventProcessor::tableCellPressed);
    connect(view, &QAbstractItemView::clicked, this, &MouseEventProcessor::tableCellClicked);
    connect(view, &QAbstractItemView::doubleClicked, this, &MouseEventProcessor::tableCellDoubleClicked);
}

void MouseEventProcessor::setAlarmDataRole(Qt::ItemDataRole role)
{
    if (role != Qt::DisplayRole && role != Qt::EditRole) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("unexpected data role ") + QString::number(role) +
                  QStringLiteral(" for MouseEventProcessor"));
        return;
    }
    m_alarmDataRole = role;
}

void MouseEventProcessor::tableCellPressed(const QModelIndex &index)
{
    processTableEvent(Press, index);
}

void MouseEventProcessor::tableCellClicked(const QModelIndex &index)
{
    processTableEvent(Click, index);
}

void MouseEventProcessor::tableCellDoubleClicked(const QModelIndex &index)
{
    processTableEvent(DoubleClick, index);
}

void MouseEventProcessor::menuRequestes(const QSharedPointer<MenuDescription> &menu, const QVariantList &args)
{
    emit contextMenuRequested(menu, args);
}

void MouseEventProcessor::processTableEvent(EventType type, const QModelIndex &index)
{
    if (processGroupNodeEvent(type, index))
        return;
    QVariantList args;
    if (!buildSourceArg(args, index, type) || !buildAlarmArg(args, index))
        return;
    if (m_processByWidget)
        processTableEventForEwo(args);
    else
        processTableEventByCtrl(args);
}

void MouseEventProcessor::processTableEventForEwo(const QVariantList &args)
{
    emit tableMouseEvent(args);
}

void MouseEventProcessor::processTableEventByCtrl(const QVariantList &args)
{
    const ScriptId scriptId = loadCtrlLib();
    if (scriptId < 0)
        return;
    const std::unique_ptr<DynVar> ctrlArgs(converter::nativeToCtrlArguments(this, args));
    if (!ctrlArgs) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("Argumnets conversion for mouse event processing failed"));
        return;
    }
    auto *callback = new MouseEventDoneCb(this, m_ctrlFunction, args);
    connect(callback, &MouseEventDoneCb::menuRequested, this, &MouseEventProcessor::menuRequestes);
    if (!CtrlBridge::startFunc(scriptId, m_ctrlFunction, *ctrlArgs, callback)) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("call of function ") + m_ctrlFunction + QStringLiteral(" in library ") + m_ctrlLibrary +
                  QStringLiteral(" failed"));
    }
}

bool MouseEventProcessor::buildSourceArg(QVariantList &args, const QModelIndex &index, EventType type)
{
    const AlarmsProxyModel *model = getAlarmsProxyModel(index);
    if (!model)
        return false;
    const QVector<ColumnDefinition> columns = model->getColumnsDefinition(true);
    const bool known = index.column() >= 0 && index.column() < columns.size();
    const QPoint pointer = QCursor::pos();
    QVariantMap source;
    source.insert(QStringLiteral("type"), int(type));
    source.insert(QStringLiteral("button"),
                  type == Press ? int(QGuiApplication::mouseButtons()) : int(Qt::LeftButton));
    source.insert(QStringLiteral("row"), buildRowValue(index));
    source.insert(QStringLiteral("columnSource"), known ? columns.at(index.column()).getSource() : 0);
    source.insert(QStringLiteral("columnId"),
                  known ? QString::fromLatin1(columns.at(index.column()).getId().toLatin1()) : QString());
    source.insert(QStringLiteral("screenX"), pointer.x());
    source.insert(QStringLiteral("screenY"), pointer.y());
    args.append(source);
    return true;
}

bool MouseEventProcessor::buildAlarmArg(QVariantList &args, const QModelIndex &index)
{
    const AlarmsProxyModel *model = getAlarmsProxyModel(index);
    if (!model)
        return false;
    const QVector<AlarmProp> props = model->getAlarmProperties();
    const QSharedPointer<AlarmInstance> alarm = model->getAlarmAtRow(index);
    if (!alarm)
        return false;
    addAlarmDataToArg(args, props, alarm);
    addAlarmDataToArg(args, props, model->getAlarmByIdent(alarm->getRelatedIdent()));
    return true;
}

void MouseEventProcessor::addAlarmDataToArg(QList<QVariant> &args, const QVector<AlarmProp> &props,
                                            const QSharedPointer<AlarmInstance> &alarm) const
{
    const Qt::ItemDataRole role = m_alarmDataRole == Qt::EditRole ? Qt::EditRole : Qt::DisplayRole;
    QVariantMap map;
    for (const AlarmProp &prop : props) {
        QVariant value;
        if (alarm) {
            value = alarm->getProperty(prop, role);
            if (role == Qt::EditRole && !value.isValid())
                value = alarm->getProperty(prop, Qt::DisplayRole);
        }
        map.insert(prop.getName(), value);
    }
    args.append(map);
}

QVariantList MouseEventProcessor::buildRowValue(const QModelIndex &index)
{
    QVariantList rows{index.row()};
    for (QModelIndex parent = index.model() ? index.model()->parent(index) : QModelIndex(); parent.isValid();
         parent = parent.model()->parent(parent))
        rows.prepend(parent.row());
    return rows;
}

const AlarmsProxyModel *MouseEventProcessor::getAlarmsProxyModel(const QModelIndex &index)
{
    const auto *model = qobject_cast<const AlarmsProxyModel *>(index.model());
    if (!model)
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("Table model is not AlarmsProxyModel"));
    return model;
}

bool MouseEventProcessor::processGroupNodeEvent(EventType type, const QModelIndex &index)
{
    if (type != Press || QGuiApplication::mouseButtons() != Qt::RightButton || index.column() != 0)
        return false;
    const auto *model = qobject_cast<const AlarmsProxyModel *>(index.model());
    if (!model || model->getAlarmAtRow(index))
        return false;

    QMenu menu;
    const QString expand = tr("Expand all nodes");
    const QString collapse = tr("Collapse all nodes");
    if (getActionAccess()) {
        addMenuAction(&menu, EwoActions::ExpandAllNodes, expand, QString());
        addMenuAction(&menu, EwoActions::CollapseAllNodes, collapse, QString());
    } else {
        // Without an access object every action is allowed.
        menu.addAction(expand)->setData(EwoActions::ExpandAllNodes);
        menu.addAction(collapse)->setData(EwoActions::CollapseAllNodes);
    }
    const QAction *chosen = menu.exec(QCursor::pos());
    if (chosen && m_treeView) {
        const QString action = chosen->data().toString();
        if (action == EwoActions::ExpandAllNodes)
            m_treeView->expandAll();
        else if (action == EwoActions::CollapseAllNodes)
            m_treeView->collapseAll();
    }
    return true;
}

ScriptId MouseEventProcessor::loadCtrlLib()
{
    if (m_ctrlLibrary.isEmpty()) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("Empty CTRL library for MouseEventProcessor"));
        return 0;
    }
    if (m_ctrlFunction.isEmpty()) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("Empty event CTRL function for MouseEventProcessor"));
        return 0;
    }
    for (const QSharedPointer<MouseCtrlLib> &library : qAsConst(m_ctrlLibInstances)) {
        if (library->isForLibrary(m_ctrlLibrary))
            return library->getScriptId();
    }
    const auto library = QSharedPointer<MouseCtrlLib>::create(this, m_ctrlLibrary);
    m_ctrlLibInstances.append(library);
    return library->getScriptId();
}
