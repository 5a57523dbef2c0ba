#include "InEwoFocusProcessor.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QWidget>

#include <algorithm>

namespace {

// The geometric order is not a strict weak order for rectangles that overlap
// both ways, and the order such layouts come out in is the one the standard
// library's introsort gives. std::sort may read outside the list when its
// order is inconsistent, so this is the same introsort (median of three,
// unguarded partition, heap sort past the depth limit, insertion sort of runs
// up to 16) with bounds checks where it relies on the order alone. For a
// consistent order the checks never trigger and the result is std::sort's.
using RectList = QList<InEwoFocusProcessor::WidgetRect *>;

bool rectLess(const InEwoFocusProcessor::WidgetRect *a, const InEwoFocusProcessor::WidgetRect *b)
{
    return *a < *b;
}

const int SortThreshold = 16;

void moveMedianToFirst(RectList &l, int result, int a, int b, int c)
{
    if (rectLess(l[a], l[b])) {
        if (rectLess(l[b], l[c]))
            l.swapItemsAt(result, b);
        else if (rectLess(l[a], l[c]))
            l.swapItemsAt(result, c);
        else
            l.swapItemsAt(result, a);
    } else if (rectLess(l[a], l[c])) {
        l.swapItemsAt(result, a);
    } else if (rectLess(l[b], l[c])) {
        l.swapItemsAt(result, c);
    } else {
        l.swapItemsAt(result, b);
    }
}

int partitionAroundPivot(RectList &l, int first, int last, int pivot)
{
    const int end = last;
    while (true) {
        while (first < end && rectLess(l[first], l[pivot]))
            ++first;
        --last;
        while (last > pivot && rectLess(l[pivot], l[last]))
            --last;
        if (!(first < last))
            return first;
        l.swapItemsAt(first, last);
        ++first;
    }
}

void heapSort(RectList &l, int first, int last)
{
    std::make_heap(l.begin() + first, l.begin() + last, rectLess);
    std::sort_heap(l.begin() + first, l.begin() + last, rectLess);
}

void introsortLoop(RectList &l, int first, int last, int depthLimit)
{
    while (last - first > SortThreshold) {
        if (depthLimit == 0) {
            heapSort(l, first, last);
            return;
        }
        --depthLimit;
        moveMedianToFirst(l, first, first + 1, first + (last - first) / 2, last - 1);
        const int cut = partitionAroundPivot(l, first + 1, last, first);
        if (cut >= last) { // only an inconsistent order gets here
            heapSort(l, first, last);
            return;
        }
        introsortLoop(l, cut, last, depthLimit);
        last = cut;
    }
}

void linearInsert(RectList &l, int pos, int begin)
{
    InEwoFocusProcessor::WidgetRect *value = l[pos];
    int next = pos - 1;
    while (next >= begin && rectLess(value, l[next])) {
        l[pos] = l[next];
        pos = next;
        --next;
    }
    l[pos] = value;
}

void insertionSort(RectList &l, int first, int last)
{
    for (int i = first + 1; i < last; ++i) {
        if (rectLess(l[i], l[first])) {
            InEwoFocusProcessor::WidgetRect *value = l[i];
            for (int j = i; j > first; --j)
                l[j] = l[j - 1];
            l[first] = value;
        } else {
            linearInsert(l, i, first);
        }
    }
}

void sortGeometrically(RectList &l)
{
    const int n = l.size();
    if (n < 2)
        return;
    int lg = 0;
    while ((n >> (lg + 1)) > 0)
        ++lg;
    introsortLoop(l, 0, n, 2 * lg);
    if (n > SortThreshold) {
        insertionSort(l, 0, SortThreshold);
        for (int i = SortThreshold; i < n; ++i)
            linearInsert(l, i, 0);
    } else {
        insertionSort(l, 0, n);
    }
}

QString widgetName(const QWidget *w)
{
    if (!w)
        return QStringLiteral("NULL");
    const QString name = w->objectName();
    return name.isEmpty() ? QString::fromLatin1(w->metaObject()->className()) : name;
}

QString directionName(bool next)
{
    return next ? QStringLiteral("next") : QStringLiteral("previous");
}

} // namespace

// --- WidgetRect ---

InEwoFocusProcessor::WidgetRect::WidgetRect(QWidget *widget, const QWidget *ewo, bool isGroup)
    : m_widget(widget), m_isGroup(isGroup)
{
    calculateRect(ewo);
}

void InEwoFocusProcessor::WidgetRect::calculateRect(const QWidget *ewo)
{
    if (!m_widget || !ewo)
        return;
    m_rect = m_widget->rect().translated(m_widget == ewo ? QPoint() : m_widget->mapTo(ewo, QPoint(0, 0)));
}

bool InEwoFocusProcessor::WidgetRect::operator<(const WidgetRect &other) const
{
    const QRect &a = m_rect;
    const QRect &b = other.m_rect;
    return a.top() < b.bottom() && (b.top() >= a.bottom() || a.right() <= b.left());
}

void InEwoFocusProcessor::WidgetRect::checkForOtherIsChild(const QList<WidgetRect *> &groups)
{
    m_nestedGroups.clear();
    for (const WidgetRect *other : groups) {
        if (other != this && other->m_widget && m_widget && other->m_widget != m_widget
            && m_widget->isAncestorOf(other->m_widget))
            m_nestedGroups.append(other);
    }
}

bool InEwoFocusProcessor::WidgetRect::isWidgetInGroup(const QWidget *widget) const
{
    if (!m_widget || !widget || !m_widget->isAncestorOf(widget))
        return false;
    return std::none_of(m_nestedGroups.begin(), m_nestedGroups.end(), [widget](const WidgetRect *nested) {
        return nested->m_widget->isAncestorOf(widget);
    });
}

QString InEwoFocusProcessor::WidgetRect::toString() const
{
    return QStringLiteral("%1 (%2) @ (%3 %4) %5 x %6 group %7")
        .arg(widgetName(m_widget), m_isGroup ? QStringLiteral("GROUP") : QStringLiteral("widget"))
        .arg(m_rect.left())
        .arg(m_rect.top())
        .arg(m_rect.width())
        .arg(m_rect.height())
        .arg(m_group ? widgetName(m_group->m_widget) : QStringLiteral("NULL"));
}

// --- WidgetRectCollection ---

InEwoFocusProcessor::WidgetRectCollection::WidgetRectCollection(const MsgLoggingProducer *logger,
                                                                 const QWidget *ewo)
    : MsgLoggingProducer(logger), m_ewo(ewo)
{
    buildAllFocusable();
}

InEwoFocusProcessor::WidgetRectCollection::WidgetRectCollection(const MsgLoggingProducer *logger,
                                                                 const QWidget *ewo, QList<WidgetRect *> &groups)
    : MsgLoggingProducer(logger), m_ewo(ewo)
{
    buildAllFocusable();
    applyGroups(groups);
}

InEwoFocusProcessor::WidgetRectCollection::WidgetRectCollection(const WidgetRectCollection *full,
                                                                 QList<WidgetRect *> &groups)
    : MsgLoggingProducer(full), m_ewo(full->m_ewo), m_ownsRects(false)
{
    for (WidgetRect *rect : full->m_rects) {
        WidgetRect *unit = rect;
        if (rect->getGroup()) {
            const auto group = std::find(groups.begin(), groups.end(), rect->getGroup());
            if (group != groups.end())
                unit = *group;
        }
        if (!m_rects.contains(unit))
            m_rects.append(unit);
    }
}

InEwoFocusProcessor::WidgetRectCollection::~WidgetRectCollection()
{
    if (m_ownsRects)
        qDeleteAll(m_rects);
}

void InEwoFocusProcessor::WidgetRectCollection::buildAllFocusable()
{
    if (m_ownsRects)
        qDeleteAll(m_rects);
    m_rects.clear();
    m_ownsRects = true;
    if (!m_ewo)
        return;
    const QList<QWidget *> children = m_ewo->findChildren<QWidget *>();
    QList<const QWidget *> kept;
    for (QWidget *child : children) {
        if (!widgetCanAcceptFocus(child, m_ewo))
            continue;
        QWidget *target = child;
        while (target->focusProxy())
            target = target->focusProxy();
        if (kept.contains(target))
            continue;
        kept.append(target);
        m_rects.append(new WidgetRect(target, m_ewo));
    }
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("Total children %1, for focus %2").arg(children.size()).arg(m_rects.size()));
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("Before rect sort:\n") + toString());
    sortGeometrically(m_rects);
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("After rect sort:\n") + toString());
}

void InEwoFocusProcessor::WidgetRectCollection::applyGroups(QList<WidgetRect *> &groups)
{
    for (WidgetRect *group : groups)
        group->checkForOtherIsChild(groups);
    for (WidgetRect *rect : m_rects) {
        rect->setGroup(nullptr);
        for (const WidgetRect *group : groups) {
            if (group->isWidgetInGroup(rect->getWidget())) {
                rect->setGroup(group);
                break;
            }
        }
    }
}

int InEwoFocusProcessor::WidgetRectCollection::indexOfWidget(const QWidget *widget) const
{
    for (int i = 0; i < m_rects.size(); ++i) {
        if (m_rects.at(i)->getWidget() == widget)
            return i;
    }
    return -1;
}

QWidget *InEwoFocusProcessor::WidgetRectCollection::getFirstWidget(bool first) const
{
    if (m_rects.isEmpty())
        return nullptr;
    return (first ? m_rects.first() : m_rects.last())->getWidget();
}

const InEwoFocusProcessor::WidgetRect *
InEwoFocusProcessor::WidgetRectCollection::getNextRect(const QWidget *widget, bool next) const
{
    const int index = indexOfWidget(widget);
    if (index < 0)
        return nullptr;
    const int neighbour = next ? index + 1 : index - 1;
    return neighbour >= 0 && neighbour < m_rects.size() ? m_rects.at(neighbour) : nullptr;
}

QWidget *InEwoFocusProcessor::WidgetRectCollection::nextWidgetInGroup(int index, const WidgetRect *group) const
{
    for (int i = index + 1; i < m_rects.size(); ++i) {
        if (m_rects.at(i)->getGroup() == group)
            return m_rects.at(i)->getWidget();
    }
    return nullptr;
}

QWidget *InEwoFocusProcessor::WidgetRectCollection::prevWidgetInGroup(int index, const WidgetRect *group) const
{
    for (int i = qMin(index, m_rects.size()) - 1; i >= 0; --i) {
        if (m_rects.at(i)->getGroup() == group)
            return m_rects.at(i)->getWidget();
    }
    return nullptr;
}

QWidget *InEwoFocusProcessor::WidgetRectCollection::memberOfGroup(const WidgetRect *group, bool first) const
{
    return first ? nextWidgetInGroup(-1, group) : prevWidgetInGroup(m_rects.size(), group);
}

QWidget *InEwoFocusProcessor::WidgetRectCollection::getNextFocus(const QWidget *current,
                                                                 const QList<WidgetRect *> &groups,
                                                                 bool next) const
{
    const int index = indexOfWidget(current);
    if (index < 0)
        return nullptr;
    const WidgetRect *rect = m_rects.at(index);
    const WidgetRect *group = rect->getGroup();
    if (group) {
        if (QWidget *member = next ? nextWidgetInGroup(index, group) : prevWidgetInGroup(index, group))
            return member;
    }
    // The group is done (or there is none): its neighbour in the outer order.
    QList<WidgetRect *> groupList = groups;
    const WidgetRectCollection outer(this, groupList);
    const WidgetRect *unit = group ? group : rect;
    const int position = outer.m_rects.indexOf(const_cast<WidgetRect *>(unit));
    const int neighbour = next ? position + 1 : position - 1;
    if (position < 0 || neighbour < 0 || neighbour >= outer.m_rects.size())
        return nullptr;
    const WidgetRect *target = outer.m_rects.at(neighbour);
    return target->isGroup() ? memberOfGroup(target, next) : target->getWidget();
}

QString InEwoFocusProcessor::WidgetRectCollection::toString() const
{
    QStringList lines;
    for (const WidgetRect *rect : m_rects)
        lines << rect->toString();
    return lines.join(QLatin1Char('\n'));
}

// --- InEwoFocusProcessor ---

InEwoFocusProcessor::InEwoFocusProcessor(const MsgLoggingProducer *logger, QWidget *ewo)
    : QObject(ewo), MsgLoggingProducer(logger), m_ewoWidget(ewo)
{
    connect(qApp, &QApplication::focusChanged, this, &InEwoFocusProcessor::focusChanged);
    // Keys go to the focus widget first, and widgets such as item views use
    // Tab themselves; only a filter on the application sees every Tab inside
    // the EWO, including those of widgets created later, before anyone else.
    qApp->installEventFilter(this);
}

InEwoFocusProcessor::~InEwoFocusProcessor()
{
    if (qApp)
        qApp->removeEventFilter(this);
}

void InEwoFocusProcessor::addTabGroup(QWidget *group)
{
    if (!group || !m_ewoWidget || group == m_ewoWidget || !m_ewoWidget->isAncestorOf(group)) {
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("attempt to addTabGroup() where widget is not descendant of m_ewoWidget"));
        return;
    }
    if (!m_tabGroups.contains(group))
        m_tabGroups.append(group);
}

void InEwoFocusProcessor::removeTabGroup(QWidget *group)
{
    m_tabGroups.removeAll(group);
}

QList<InEwoFocusProcessor::WidgetRect *> InEwoFocusProcessor::makeGroups() const
{
    QList<WidgetRect *> groups;
    for (const QPointer<QWidget> &container : m_tabGroups) {
        if (container && m_ewoWidget->isAncestorOf(container))
            groups.append(new WidgetRect(container, m_ewoWidget, true));
    }
    return groups;
}

bool InEwoFocusProcessor::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_ewoWidget || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn && watched == m_ewoWidget) {
        processEwoFocusIn(static_cast<QFocusEvent *>(event));
        return QObject::eventFilter(watched, event);
    }
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    // A key reaches the focus widget first, then its parents; act once, on
    // the focus widget, and only inside the EWO's own window.
    auto *widget = static_cast<QWidget *>(watched);
    if (widget != QApplication::focusWidget() || !m_ewoWidget->isAncestorOf(widget))
        return QObject::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("KeyPress of ") + watched->objectName());
    bool moved = false;
    if (key->key() == Qt::Key_Tab && !(key->modifiers() & Qt::ShiftModifier))
        moved = focusNextPrevEwoWidget(true);
    else if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab)
        moved = focusNextPrevEwoWidget(false);
    else
        return QObject::eventFilter(watched, event);
    if (!moved)
        return QObject::eventFilter(watched, event);
    event->accept();
    return true;
}

bool InEwoFocusProcessor::focusNextPrevEwoWidget(bool next)
{
    QWidget *focus = QApplication::focusWidget();
    if (!focus) {
        ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("No widget with focus"));
        return false;
    }
    if (!m_ewoWidget || !m_ewoWidget->isAncestorOf(focus)) {
        ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("Focus widget is not descendant of EWO"));
        return false;
    }
    QList<WidgetRect *> groups = makeGroups();
    QWidget *target = nullptr;
    {
        const WidgetRectCollection collection(this, m_ewoWidget, groups);
        target = collection.getNextFocus(focus, groups, next);
    }
    qDeleteAll(groups);
    if (!target) {
        ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("No next widget for direction ") + directionName(next));
        return false;
    }
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("focusNextPrevEwoWidget(%1): next is %2").arg(directionName(next), widgetName(target)));
    // A text editor's completion list would stay open over the next widget.
    if (focus->inherits("SingleLineTextEdit") && focus->metaObject()->indexOfMethod("hidePopup()") >= 0) {
        ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("hiding popup for ") + widgetName(focus));
        QMetaObject::invokeMethod(focus, "hidePopup", Qt::DirectConnection);
    }
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("Setting focus to ") + widgetName(target));
    // The walk stands for Tab: widgets that treat a Tab arrival apart (a line
    // edit selecting its text, a pattern editor keeping its list closed) must
    // see it as one.
    target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool InEwoFocusProcessor::setFocusToFirstLast(bool first)
{
    if (!m_ewoWidget)
        return false;
    QList<WidgetRect *> groups = makeGroups();
    QWidget *target = nullptr;
    {
        const WidgetRectCollection collection(this, m_ewoWidget, groups);
        target = collection.getFirstWidget(first);
    }
    qDeleteAll(groups);
    if (!target)
        return false;
    target->setFocus(first ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool InEwoFocusProcessor::processEwoFocusIn(QFocusEvent *event)
{
    const Qt::FocusReason reason = event->reason();
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("reason %1").arg(int(reason)));
    switch (reason) {
    case Qt::TabFocusReason:
        return setFocusToFirstLast(true);
    case Qt::BacktabFocusReason:
        return setFocusToFirstLast(false);
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::OtherFocusReason:
        if (m_lastFocusWidget && widgetCanAcceptFocus(m_lastFocusWidget, m_ewoWidget)) {
            ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("lastFocusWidget: ") + widgetName(m_lastFocusWidget));
            m_lastFocusWidget->setFocus(reason);
            return true;
        }
        return setFocusToFirstLast(true);
    default:
        return false;
    }
}

bool InEwoFocusProcessor::widgetCanAcceptFocus(const QWidget *w, const QWidget *ewo)
{
    if (!w || !ewo || w == ewo)
        return false;
    const QWidget *p = w;
    while (p->focusProxy())
        p = p->focusProxy();
    if (!ewo->isAncestorOf(p) || p->focusPolicy() == Qt::NoFocus || !p->isVisibleTo(ewo) || !p->isEnabled())
        return false;
    const Qt::WindowType type = p->windowType();
    return type != Qt::Popup && type != Qt::SubWindow;
}

void InEwoFocusProcessor::focusChanged(QWidget *, QWidget *now)
{
    if (!now || !m_ewoWidget || now == m_ewoWidget || !m_ewoWidget->isAncestorOf(now))
        return;
    m_lastFocusWidget = now;
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("last focus widget set to ") + widgetName(now));
}
