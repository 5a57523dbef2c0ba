#pragma once

#include "UserSettings.h"
#include "widgets_export.h"

#include <QWidget>

class QFrame;
class QGridLayout;
class QLayout;
class QParallelAnimationGroup;
class QScrollArea;
class QSplitter;
class QToolButton;

// A section that folds its content away and back with an animation. It can
// also take over a main widget that normally lives in a splitter (the filter
// area, for example): setInSpoiler(true) moves the widget out of the splitter
// into the section, leaving an empty placeholder in its place, and
// setInSpoiler(false) puts it back.
class WIDGETS_EXPORT Spoiler : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)
    Q_PROPERTY(int animationDuration READ animationDuration WRITE setAnimationDuration)
public:
    explicit Spoiler(QWidget *parent = nullptr);
    explicit Spoiler(const QString &title, QWidget *parent = nullptr);

    QString title() const;
    void setTitle(const QString &title);
    int animationDuration() const { return m_animationDuration; }
    // Shorter than 200 ms is not animated visibly: 200 at least.
    void setAnimationDuration(int ms);

    // Installs the content (the old layout is deleted, its widgets stay).
    void setContentLayout(QLayout *layout);
    // Recomputes the heights the animation runs between; call it when the
    // content changed its size.
    void updateContentGeometry();
    // Whether the section shows its content (the toggle's state).
    bool isExpanded() const;

    void setMainWidget(QWidget *widget, QSplitter *splitter, QWidget *altParent);
    QWidget *getMainWidget() const { return m_mainWidget; }
    bool isInSpoiler() const;
    void setInSpoiler(bool on);

    void setWidgetVisibility(UserSettings::AsAreaVisibility visibility, bool forced = false);
    UserSettings::AsAreaVisibility getWidgetVisibility() const { return m_visibility; }

public slots:
    void toggleClicked(bool checked);

private slots:
    void splitterMoved(int pos, int index);

private:
    void moveToAltParent();
    void moveToSplitter();

    QGridLayout *m_layout = nullptr;
    QToolButton *m_toggleButton = nullptr;
    QFrame *m_headerLine = nullptr;
    QScrollArea *m_contentArea = nullptr;
    QParallelAnimationGroup *m_animation = nullptr;
    QWidget *m_mainWidget = nullptr;
    QSplitter *m_splitter = nullptr;
    QWidget *m_altParent = nullptr;
    QWidget *m_placeholder = nullptr;
    int m_animationDuration = 300;
    int m_collapsedHeight = -1;
    UserSettings::AsAreaVisibility m_visibility = UserSettings::AreaHidden;
    bool m_hasContent = false;
};
