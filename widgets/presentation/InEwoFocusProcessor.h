#pragma once

#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRect>

class QFocusEvent;
class QWidget;

// Tab and Shift+Tab inside the EWO in geometric order: the focusable widgets
// are visited row by row, left to right. Containers registered as tab groups
// are one unit in that order and their members are visited one after another.
// When there is nothing to go to, the key is left to the host so that focus
// can leave the EWO.
class WIDGETS_EXPORT InEwoFocusProcessor : public QObject, public MsgLoggingProducer
{
    Q_OBJECT
public:
    // A focus candidate, or the rectangle of a tab group's container.
    class WIDGETS_EXPORT WidgetRect
    {
    public:
        WidgetRect(QWidget *widget, const QWidget *ewo, bool isGroup = false);

        void calculateRect(const QWidget *ewo);
        // Before in the geometric order: above, or on the same rows and to the left.
        bool operator<(const WidgetRect &other) const;

        QWidget *getWidget() const { return m_widget; }
        const QRect &getRect() const { return m_rect; }
        const WidgetRect *getGroup() const { return m_group; }
        void setGroup(const WidgetRect *group) { m_group = group; }
        bool isGroup() const { return m_isGroup; }
        const QList<const WidgetRect *> &getNestedGroups() const { return m_nestedGroups; }
        // Notes the groups of `groups` whose containers lie inside this group's container.
        void checkForOtherIsChild(const QList<WidgetRect *> &groups);
        // The widget lies inside this group's container and inside no nested group's.
        bool isWidgetInGroup(const QWidget *widget) const;
        QString toString() const;

    private:
        QWidget *m_widget;
        QRect m_rect;
        const WidgetRect *m_group = nullptr;
        QList<const WidgetRect *> m_nestedGroups;
        bool m_isGroup;
    };

    // Focus candidates of the EWO in geometric order.
    class WIDGETS_EXPORT WidgetRectCollection : public MsgLoggingProducer
    {
    public:
        // All focusable widgets, sorted.
        WidgetRectCollection(const MsgLoggingProducer *logger, const QWidget *ewo);
        // The same, each widget knowing the innermost of `groups` it belongs to.
        WidgetRectCollection(const MsgLoggingProducer *logger, const QWidget *ewo, QList<WidgetRect *> &groups);
        // The outer order of `full`: the members of each group replaced by the
        // group's rectangle. Refers to the rectangles of `full` and `groups`.
        WidgetRectCollection(const WidgetRectCollection *full, QList<WidgetRect *> &groups);
        ~WidgetRectCollection() override;
        WidgetRectCollection(const WidgetRectCollection &) = delete;
        WidgetRectCollection &operator=(const WidgetRectCollection &) = delete;

        void buildAllFocusable();
        int indexOfWidget(const QWidget *widget) const;
        QWidget *getFirstWidget(bool first) const;
        // The neighbour of the widget's rectangle in this list.
        const WidgetRect *getNextRect(const QWidget *widget, bool next) const;
        QWidget *nextWidgetInGroup(int index, const WidgetRect *group) const;
        QWidget *prevWidgetInGroup(int index, const WidgetRect *group) const;
        QWidget *getNextFocus(const QWidget *current, const QList<WidgetRect *> &groups, bool next) const;
        QString toString() const;
        const QList<WidgetRect *> &getRects() const { return m_rects; }

    private:
        void applyGroups(QList<WidgetRect *> &groups);
        QWidget *memberOfGroup(const WidgetRect *group, bool first) const;

        const QWidget *m_ewo;
        QList<WidgetRect *> m_rects;
        bool m_ownsRects = true;
    };

    InEwoFocusProcessor(const MsgLoggingProducer *logger, QWidget *ewo);
    ~InEwoFocusProcessor() override;

    void addTabGroup(QWidget *group);
    void removeTabGroup(QWidget *group);

    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevEwoWidget(bool next);
    bool setFocusToFirstLast(bool first);
    bool processEwoFocusIn(QFocusEvent *event);

    static bool widgetCanAcceptFocus(const QWidget *w, const QWidget *ewo);

public slots:
    void focusChanged(QWidget *old, QWidget *now);

private:
    // Group rectangles of the registered containers still inside the EWO.
    QList<WidgetRect *> makeGroups() const;

    QPointer<QWidget> m_ewoWidget;
    QList<QPointer<QWidget>> m_tabGroups;
    QPointer<QWidget> m_lastFocusWidget;
};
