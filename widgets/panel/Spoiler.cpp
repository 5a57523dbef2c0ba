#include "Spoiler.h"

#include <QFrame>
#include <QGridLayout>
#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <QScrollArea>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

Spoiler::Spoiler(QWidget *parent) : Spoiler(tr("Show/hide"), parent) {}

Spoiler::Spoiler(const QString &title, QWidget *parent)
    : QWidget(parent)
    , m_layout(new QGridLayout(this))
    , m_toggleButton(new QToolButton(this))
    , m_headerLine(new QFrame(this))
    , m_contentArea(new QScrollArea(this))
    , m_animation(new QParallelAnimationGroup(this))
{
    m_toggleButton->setStyleSheet(QStringLiteral("QToolButton { border: none; }"));
    m_toggleButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toggleButton->setArrowType(Qt::RightArrow);
    m_toggleButton->setText(title);
    m_toggleButton->setCheckable(true);
    m_toggleButton->setChecked(true);

    m_headerLine->setFrameShape(QFrame::HLine);
    m_headerLine->setFrameShadow(QFrame::Sunken);
    m_headerLine->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);

    m_contentArea->setStyleSheet(QStringLiteral("QScrollArea { border: none; }"));
    m_contentArea->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_contentArea->setMinimumHeight(0);
    m_contentArea->setMaximumHeight(0);

    m_animation->addAnimation(new QPropertyAnimation(this, "minimumHeight"));
    m_animation->addAnimation(new QPropertyAnimation(this, "maximumHeight"));
    m_animation->addAnimation(new QPropertyAnimation(m_contentArea, "maximumHeight"));

    m_layout->setVerticalSpacing(0);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_toggleButton, 0, 0, 1, 1, Qt::AlignLeft);
    m_layout->addWidget(m_headerLine, 0, 2, 1, 1);
    m_layout->addWidget(m_contentArea, 1, 0, 1, 3);

    connect(m_toggleButton, &QToolButton::clicked, this, &Spoiler::toggleClicked);
}

QString Spoiler::title() const
{
    return m_toggleButton->text();
}

void Spoiler::setTitle(const QString &title)
{
    m_toggleButton->setText(title);
}

void Spoiler::setAnimationDuration(int ms)
{
    m_animationDuration = qMax(200, ms);
}

bool Spoiler::isExpanded() const
{
    return m_toggleButton->isChecked();
}

void Spoiler::toggleClicked(bool checked)
{
    m_toggleButton->setArrowType(checked ? Qt::DownArrow : Qt::RightArrow);
    if (m_hasContent) {
        m_animation->setDirection(checked ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
        m_animation->start();
    }
    m_visibility = checked ? UserSettings::AreaExpanded : UserSettings::AreaCollapsed;
}

void Spoiler::setContentLayout(QLayout *layout)
{
    delete m_contentArea->layout();
    m_contentArea->setLayout(layout);
    m_hasContent = layout != nullptr;
    if (m_hasContent)
        updateContentGeometry();
}

void Spoiler::updateContentGeometry()
{
    if (m_collapsedHeight < 0)
        m_collapsedHeight = sizeHint().height() - m_contentArea->maximumHeight();
    const QLayout *content = m_contentArea->layout();
    const int contentHeight = content ? content->sizeHint().height() : 0;
    const int last = m_animation->animationCount() - 1;
    for (int i = 0; i <= last; ++i) {
        auto *animation = static_cast<QPropertyAnimation *>(m_animation->animationAt(i));
        animation->setDuration(m_animationDuration);
        animation->setStartValue(i < last ? m_collapsedHeight : 0);
        animation->setEndValue(i < last ? m_collapsedHeight + contentHeight : contentHeight);
    }
}

void Spoiler::setMainWidget(QWidget *widget, QSplitter *splitter, QWidget *altParent)
{
    if (m_splitter)
        disconnect(m_splitter, &QSplitter::splitterMoved, this, &Spoiler::splitterMoved);
    m_mainWidget = widget;
    m_splitter = splitter;
    m_altParent = altParent;
    m_visibility = widget && !widget->isHidden() ? UserSettings::AreaExpanded : UserSettings::AreaHidden;
    if (m_splitter)
        connect(m_splitter, &QSplitter::splitterMoved, this, &Spoiler::splitterMoved);
}

void Spoiler::splitterMoved(int, int index)
{
    if (!m_mainWidget || !m_splitter)
        return;
    const int at = m_splitter->indexOf(m_mainWidget);
    if ((at == 0 && index == 1) || (at == 2 && index == 2)) {
        const int size = m_splitter->orientation() == Qt::Vertical ? m_mainWidget->height() : m_mainWidget->width();
        m_visibility = size == 0 ? UserSettings::AreaCollapsed : UserSettings::AreaExpanded;
    }
}

bool Spoiler::isInSpoiler() const
{
    if (!m_mainWidget) {
        qWarning("Spoiler::isInSpoiler() is called while main widget is NULL");
        return false;
    }
    return !m_splitter || m_splitter->indexOf(m_mainWidget) < 0;
}

void Spoiler::setInSpoiler(bool on)
{
    if (!m_mainWidget) {
        qWarning("Spoiler::setInSpoiler() is called while main widget is NULL");
        return;
    }
    const bool inSpoiler = isInSpoiler();
    if (on && !inSpoiler)
        moveToAltParent();
    else if (!on && inSpoiler && m_placeholder)
        moveToSplitter();
}

void Spoiler::moveToAltParent()
{
    auto *placeholder = new QWidget;
    QWidget *replaced = m_splitter->replaceWidget(m_splitter->indexOf(m_mainWidget), placeholder);
    if (replaced != m_mainWidget) {
        qWarning("m_splitter->replaceWidget() returned unexpected widget");
        if (!placeholder->parent())
            delete placeholder;
        return;
    }
    m_placeholder = placeholder;
    m_placeholder->hide();
    // Made without a parent: a layout that belongs to another widget cannot
    // be installed on the content area.
    auto *layout = new QVBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_mainWidget);
    setContentLayout(layout);
    setWidgetVisibility(m_visibility, true);
}

void Spoiler::moveToSplitter()
{
    setContentLayout(new QVBoxLayout);
    QWidget *replaced = m_splitter->replaceWidget(m_splitter->indexOf(m_placeholder), m_mainWidget);
    delete replaced;
    m_placeholder = nullptr;
    hide();
    if (m_visibility != UserSettings::AreaHidden)
        m_mainWidget->show();
}

void Spoiler::setWidgetVisibility(UserSettings::AsAreaVisibility visibility, bool forced)
{
    if (visibility == m_visibility && !forced)
        return;
    m_visibility = visibility;
    if (visibility == UserSettings::AreaHidden) {
        if (m_mainWidget)
            m_mainWidget->hide();
        hide();
        return;
    }
    const bool expanded = visibility == UserSettings::AreaExpanded;
    if (m_mainWidget)
        m_mainWidget->show();
    show();
    if (!m_mainWidget || isInSpoiler()) {
        m_toggleButton->setChecked(expanded);
        toggleClicked(expanded);
    } else {
        QList<int> sizes = m_splitter->sizes();
        sizes[m_splitter->indexOf(m_mainWidget)] = expanded ? 1 : 0;
        m_splitter->setSizes(sizes);
    }
}
