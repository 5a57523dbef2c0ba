#include "FlowLayout.h"

#include <QWidget>

FlowLayout::FlowLayout(QWidget *parent, int margin, int hSpacing, int vSpacing)
    : QLayout(parent), m_hSpace(hSpacing), m_vSpace(vSpacing)
{
    setContentsMargins(margin, margin, margin, margin);
}

FlowLayout::FlowLayout(int margin, int hSpacing, int vSpacing)
    : m_hSpace(hSpacing), m_vSpace(vSpacing)
{
    setContentsMargins(margin, margin, margin, margin);
}

FlowLayout::~FlowLayout()
{
    while (QLayoutItem *item = takeAt(0))
        delete item;
}

void FlowLayout::addItem(QLayoutItem *item)
{
    m_itemList.append(item);
}

int FlowLayout::horizontalSpacing() const
{
    return m_hSpace >= 0 ? m_hSpace : smartSpacing(QStyle::PM_LayoutHorizontalSpacing);
}

int FlowLayout::verticalSpacing() const
{
    return m_vSpace >= 0 ? m_vSpace : smartSpacing(QStyle::PM_LayoutVerticalSpacing);
}

Qt::Orientations FlowLayout::expandingDirections() const
{
    return {};
}

bool FlowLayout::hasHeightForWidth() const
{
    return true;
}

int FlowLayout::heightForWidth(int width) const
{
    return doLayout(QRect(0, 0, width, 0), true);
}

int FlowLayout::count() const
{
    return m_itemList.size();
}

QLayoutItem *FlowLayout::itemAt(int index) const
{
    return m_itemList.value(index, nullptr);
}

QLayoutItem *FlowLayout::takeAt(int index)
{
    if (index < 0 || index >= m_itemList.size())
        return nullptr;
    return m_itemList.takeAt(index);
}

QSize FlowLayout::minimumSize() const
{
    QSize size(-1, -1);
    for (const QLayoutItem *item : m_itemList)
        size = size.expandedTo(item->minimumSize());
    const QMargins margins = contentsMargins();
    // Every contents margin is the one given at construction.
    size += QSize(2 * margins.left(), 2 * margins.top());
    return size;
}

QSize FlowLayout::sizeHint() const
{
    return minimumSize();
}

void FlowLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    doLayout(rect, false);
}

int FlowLayout::itemSpacing(int layoutSpacing, QLayoutItem *item,
                            Qt::Orientation orientation) const
{
    if (layoutSpacing != -1)
        return layoutSpacing;
    const QWidget *widget = item->widget();
    if (!widget)
        return -1;
    return widget->style()->layoutSpacing(QSizePolicy::PushButton, QSizePolicy::PushButton,
                                          orientation);
}

int FlowLayout::doLayout(const QRect &rect, bool testOnly) const
{
    const QMargins margins = contentsMargins();
    const QRect effective = rect.adjusted(margins.left(), margins.top(), -margins.right(),
                                          -margins.bottom());
    int x = effective.x();
    int y = effective.y();
    int lineHeight = 0;

    const int hSpace = horizontalSpacing();
    const int vSpace = verticalSpacing();
    for (QLayoutItem *item : m_itemList) {
        const int spaceX = itemSpacing(hSpace, item, Qt::Horizontal);
        const int spaceY = itemSpacing(vSpace, item, Qt::Vertical);
        const QSize hint = item->sizeHint();
        int nextX = x + hint.width() + spaceX;
        if (nextX - spaceX > effective.right() && lineHeight > 0) {
            x = effective.x();
            y = y + lineHeight + spaceY;
            nextX = x + hint.width() + spaceX;
            lineHeight = 0;
        }
        if (!testOnly)
            item->setGeometry(QRect(QPoint(x, y), hint));
        x = nextX;
        lineHeight = qMax(lineHeight, hint.height());
    }
    return y + lineHeight - rect.y() + margins.bottom();
}

int FlowLayout::smartSpacing(QStyle::PixelMetric pm) const
{
    QObject *parentObject = parent();
    if (!parentObject)
        return -1;
    if (parentObject->isWidgetType()) {
        auto *parentWidget = static_cast<QWidget *>(parentObject);
        return parentWidget->style()->pixelMetric(pm, nullptr, parentWidget);
    }
    return static_cast<QLayout *>(parentObject)->spacing();
}
