#include "WFixedMultiFilterToggle.h"

#include "ValueFilterFixedMulti.h"

WFixedMultiFilterToggle::WFixedMultiFilterToggle(const WildcardConfig &config,
                                                 const QSharedPointer<ValueFilterFixedMulti> &filter,
                                                 QWidget *parent)
    : WFilter(config, filter->getValueId(), filter->getSource(), parent), m_filter(filter)
{
}

WFixedMultiFilterToggle::~WFixedMultiFilterToggle() = default;

QSharedPointer<ValueFilter> WFixedMultiFilterToggle::getFilter(bool matchCase)
{
    QSharedPointer<ValueFilterFixedMulti> copy(new ValueFilterFixedMulti(*m_filter));
    copy->setMatchCase(matchCase);
    return copy;
}

bool WFixedMultiFilterToggle::setFilter(const QSharedPointer<ValueFilter> &filter,
                                        bool matchCase, QString &errorText)
{
    if (!isPropertyMatch(filter, errorText))
        return false;
    const auto given = filter.dynamicCast<ValueFilterFixedMulti>();
    if (!given || !m_filter->isCompatible(*given))
        return false;
    m_filter->setMatchCase(matchCase);
    for (const QSharedPointer<ValueFilterFixed> &fixed : given->getFixedFilters()) {
        setFilterState(fixed->getFixedKind(), fixed->isChecked(), false);
        const QPointer<QAbstractButton> button = m_buttons.value(fixed->getFixedKind());
        if (button)
            button->setChecked(fixed->isChecked());
    }
    return true;
}

void WFixedMultiFilterToggle::setMatchCase(bool matchCase)
{
    m_filter->setMatchCase(matchCase);
}

QString WFixedMultiFilterToggle::getColumnId() const
{
    return m_filter->getValueId();
}

Constants::ValueSource WFixedMultiFilterToggle::getSource() const
{
    return m_filter->getSource();
}

bool WFixedMultiFilterToggle::addButton(QAbstractButton *button, const QString &kind)
{
    if (!m_filter->findFixedFilter(kind)) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("WFixedMultiFilterToggle::addButton(): unknown filter kind ") + kind);
        return false;
    }
    m_buttons[kind] = button;
    connect(button, &QAbstractButton::clicked, this, &WFixedMultiFilterToggle::buttonClicked);
    return true;
}

void WFixedMultiFilterToggle::setFilterState(const QString &kind, bool checked, bool emitSignal)
{
    const QSharedPointer<ValueFilterFixed> fixed = m_filter->findFixedFilter(kind);
    if (!fixed || fixed->isChecked() == checked)
        return;
    fixed->setChecked(checked);
    if (emitSignal)
        emit filterChanged();
}

void WFixedMultiFilterToggle::buttonClicked(bool checked)
{
    Q_UNUSED(checked)
    QObject *clicked = sender();
    // A copy: setFilterState may lead a receiver to add buttons.
    const QMap<QString, QPointer<QAbstractButton>> buttons = m_buttons;
    for (auto it = buttons.constBegin(); it != buttons.constEnd(); ++it) {
        if (it.value() && it.value() == clicked)
            setFilterState(it.key(), it.value()->isChecked(), true);
    }
}
