#include "ConnectionMapWidget.h"

#include "AlarmsProxyModel.h"
#include "SystemConnectionsControl.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace {
constexpr int MinimumExtent = 16;
}

void ConnectionMapWidget::SystemConnectionInfo::draw(QPainter &painter, bool highlighted) const
{
    QColor fill(255, 0, 0);
    if (connected)
        fill = alarmsConnected ? QColor(0, 255, 0) : QColor(255, 255, 0);
    painter.setBrush(fill);
    painter.setPen(highlighted ? QColor(0, 0, 0) : QColor(128, 128, 128));
    painter.drawRects(&rect, 1);
}

ConnectionMapWidget::ConnectionMapWidget(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

void ConnectionMapWidget::setProxyModel(AlarmsProxyModel *model)
{
    if (m_proxyModel == model)
        return;
    if (m_proxyModel) {
        disconnect(m_proxyModel, &AlarmsProxyModel::connectedSystemsChanged, this,
                   &ConnectionMapWidget::connectedSystemsChanged);
        disconnect(m_proxyModel, &AlarmsProxyModel::systemListChanged, this,
                   &ConnectionMapWidget::systemListChanged);
    }
    m_proxyModel = model;
    if (m_proxyModel) {
        connect(m_proxyModel, &AlarmsProxyModel::connectedSystemsChanged, this,
                &ConnectionMapWidget::connectedSystemsChanged);
        connect(m_proxyModel, &AlarmsProxyModel::systemListChanged, this, &ConnectionMapWidget::systemListChanged);
    }
    updateModelConnections();
}

void ConnectionMapWidget::connectedSystemsChanged()
{
    updateSystemConnections();
}

void ConnectionMapWidget::systemListChanged()
{
    updateModelConnections();
}

void ConnectionMapWidget::updateModelConnections()
{
    m_systems.clear();
    if (m_proxyModel) {
        const QMap<unsigned int, SystemInfo> systems = m_proxyModel->getSystems();
        for (auto it = systems.cbegin(); it != systems.cend(); ++it) {
            SystemConnectionInfo info;
            info.name = it->getName();
            checkSystemConnections(info, *it);
            m_systems.insert(it.key(), info);
        }
    }
    if (!m_systems.contains(m_highlighted))
        m_highlighted = m_systems.isEmpty() ? 0 : m_systems.firstKey();
    applyGeometry();
    update();
}

void ConnectionMapWidget::updateSystemConnections()
{
    if (!m_proxyModel)
        return;
    const QMap<unsigned int, SystemInfo> systems = m_proxyModel->getSystems();
    // A connection signal may come before the list signal of the same change.
    if (systems.keys() != m_systems.keys()) {
        updateModelConnections();
        return;
    }
    bool changed = false;
    for (auto it = m_systems.begin(); it != m_systems.end(); ++it) {
        const SystemInfo system = systems.value(it.key());
        if (system.getName() != it->name) {
            updateModelConnections();
            return;
        }
        changed = checkSystemConnections(*it, system) || changed;
    }
    if (changed)
        update();
}

bool ConnectionMapWidget::checkSystemConnections(SystemConnectionInfo &info, const SystemInfo &systemInfo) const
{
    const SystemConnectionsControl *control = m_proxyModel ? m_proxyModel->getConnectionControl() : nullptr;
    const bool connected = systemInfo.isConnected();
    const bool alarmsConnected = control && control->isSystemConnected(info.name);
    const bool changed = connected != info.connected || alarmsConnected != info.alarmsConnected;
    info.connected = connected;
    info.alarmsConnected = alarmsConnected;
    return changed;
}

int ConnectionMapWidget::findNumberOfRows(const QSize &) const
{
    const int count = m_systems.size();
    if (count < 6)
        return 1;
    if (count < 21)
        return 2;
    if (count < 46)
        return 3;
    return 4;
}

bool ConnectionMapWidget::buildSystemGeometry(const QSize &size)
{
    const int count = m_systems.size();
    const int rows = findNumberOfRows(size);
    // A widget not laid out yet may be 0 high; keep the squares drawable.
    const int side = std::max(1, (size.height() - 1) / rows);
    const int perRow = (count + rows - 1) / rows;
    int width = MinimumExtent;
    int height = MinimumExtent;
    int column = 0;
    int row = 0;
    for (SystemConnectionInfo &info : m_systems) {
        info.rect = QRect(column * side, row * side, side, side);
        if (++column == perRow) {
            ++row;
            column = 0;
        }
        if (width <= info.rect.right())
            width = info.rect.right() + 2;
        height = std::max(height, info.rect.bottom());
    }
    height = std::max(height, size.height());
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("systems %1, limit %2 X %3, size %4 x %5")
              .arg(count)
              .arg(width)
              .arg(height)
              .arg(size.width())
              .arg(size.height()));
    const bool changed = width != m_requiredWidth || height != m_requiredHeight;
    m_requiredWidth = width;
    m_requiredHeight = height;
    return changed;
}

void ConnectionMapWidget::applyGeometry()
{
    if (!buildSystemGeometry(size()))
        return;
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("adjust size to %1 x %2").arg(m_requiredWidth).arg(m_requiredHeight));
    // The squares' side follows the height the layout gives; the width is
    // what the map asks for in return.
    setMinimumWidth(m_requiredWidth);
    updateGeometry();
}

QSize ConnectionMapWidget::sizeHint() const
{
    return QSize(m_requiredWidth, m_requiredHeight);
}

QSize ConnectionMapWidget::minimumSizeHint() const
{
    return QSize(m_requiredWidth, MinimumExtent);
}

void ConnectionMapWidget::paintEvent(QPaintEvent *)
{
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("paint for size %1 x %2").arg(width()).arg(height()));
    QPainter painter(this);
    const bool focused = hasFocus();
    for (auto it = m_systems.cbegin(); it != m_systems.cend(); ++it)
        it->draw(painter, focused && it.key() == m_highlighted);
}

void ConnectionMapWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    applyGeometry();
}

unsigned int ConnectionMapWidget::systemAt(const QPoint &pos) const
{
    for (auto it = m_systems.cbegin(); it != m_systems.cend(); ++it) {
        if (it->rect.contains(pos))
            return it.key();
    }
    return 0;
}

void ConnectionMapWidget::mousePressEvent(QMouseEvent *event)
{
    const unsigned int number = systemAt(event->pos());
    if (number == 0) {
        QWidget::mousePressEvent(event);
        return;
    }
    m_highlighted = number;
    update();
    emit activated(m_systems.value(number).name);
}

void ConnectionMapWidget::moveHighlight(int step)
{
    if (m_systems.isEmpty())
        return;
    const QList<unsigned int> keys = m_systems.keys();
    const int position = std::clamp(int(keys.indexOf(m_highlighted)) + step, 0, int(keys.size()) - 1);
    m_highlighted = keys.at(position);
    update();
}

void ConnectionMapWidget::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        moveHighlight(-1);
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        moveHighlight(1);
        break;
    case Qt::Key_Home:
        moveHighlight(-int(m_systems.size()));
        break;
    case Qt::Key_End:
        moveHighlight(int(m_systems.size()));
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!m_systems.contains(m_highlighted)) {
            event->ignore();
            return;
        }
        emit activated(m_systems.value(m_highlighted).name);
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

QString ConnectionMapWidget::stateText(const SystemConnectionInfo &info) const
{
    if (!info.connected)
        return tr("%1: disconnected").arg(info.name);
    if (!info.alarmsConnected)
        return tr("%1: connected, alarms not connected").arg(info.name);
    return tr("%1: connected").arg(info.name);
}

bool ConnectionMapWidget::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ToolTip: {
        auto *help = static_cast<QHelpEvent *>(event);
        const unsigned int number = systemAt(help->pos());
        if (number == 0) {
            QToolTip::hideText();
            event->ignore();
        } else {
            const SystemConnectionInfo &info = m_systems[number];
            QToolTip::showText(help->globalPos(), stateText(info), this, info.rect);
        }
        return true;
    }
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        // The keyboard's square is outlined only while the map has the focus.
        update();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}
