#include "FilterStatisticsWidget.h"

#include "ColorEngine.h"

#include <QLabel>
#include <QMouseEvent>
#include <QVBoxLayout>

#include <cmath>

FilterStatisticsWidget::FilterStatisticsWidget(MsgLoggingProducer *producer, QWidget *parent, Qt::WindowFlags flags)
    : QFrame(parent, flags)
    , FilterStatisticsValueConsumer(producer)
    , m_engine(ColorEngine::getInstance(producer))
    , m_label(new QLabel(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label);
    m_label->setAlignment(Qt::AlignCenter);
    m_label->installEventFilter(this);
    // The colour names this cell shows are counted at the engine, which then
    // announces their blinking.
    setFinalTarget(m_engine.data());
    connect(m_engine.data(), &ColorEngine::colorChanged, this, &FilterStatisticsWidget::blinkHandler);
}

FilterStatisticsWidget::~FilterStatisticsWidget()
{
    // Hand the counts back while the engine is certainly alive.
    setFinalTarget(nullptr);
}

void FilterStatisticsWidget::setFilterDpName(const QString &dpName)
{
    FilterStatisticsValueConsumer::setFilterDpName(dpName);
}

void FilterStatisticsWidget::setFilter(const QString &id, const SourceAndFilter &filter)
{
    connect(getNotifier(), &FilterStatisticsNotifier::changed, this, &FilterStatisticsWidget::statsSourceChanged,
            Qt::UniqueConnection);
    FilterStatisticsValueConsumer::setFilter(id, filter);
}

void FilterStatisticsWidget::setModel(const QSharedPointer<AlarmsModel> &model)
{
    FilterStatisticsValueConsumer::setModel(model);
}

void FilterStatisticsWidget::setTextTemplate(const QString &text)
{
    FilterStatisticsValueConsumer::setTextTemplate(text);
}

void FilterStatisticsWidget::setTooTipTemplate(const QString &toolTip)
{
    FilterStatisticsValueConsumer::setTooTipTemplate(toolTip);
}

void FilterStatisticsWidget::setBackColorSource(const FilterViewItemConfiguration::StatsColorSource &source)
{
    FilterStatisticsValueConsumer::setBackColorSource(source);
    applyNewColor(true);
}

void FilterStatisticsWidget::setForeColorSource(const FilterViewItemConfiguration::StatsColorSource &source)
{
    FilterStatisticsValueConsumer::setForeColorSource(source);
    applyNewColor(true);
}

void FilterStatisticsWidget::matchCurrentFilterChanged()
{
    QFont font = m_label->font();
    font.setBold(isMatchingCurrentFilter());
    m_label->setFont(font);
}

QString FilterStatisticsWidget::getReplacementString(const FilterStatisticsValue *value, const FilterStatistics *stats,
                                                     const QString &placeholder) const
{
    const QString text = value->getText(stats, placeholder);
    if (text.isEmpty() || !value->isColor())
        return text;
    const QColor color = m_engine->getColor(text)->getCurrentColor();
    if (color.isValid())
        return color.name();
    ASLOG(this, MsgLoggerEnums::Warning,
          QStringLiteral("invalid color ") + text + QStringLiteral(" for placeHolder ") + placeholder);
    return text;
}

QMap<QString, QVariant> FilterStatisticsWidget::getStatisticsAsMap() const
{
    QMap<QString, QVariant> map;
    const QMap<QString, FilterStatisticsValue *> &placeholders = getPlaceholders();
    for (auto it = placeholders.constBegin(); it != placeholders.constEnd(); ++it)
        map.insert(it.key(), it.value()->getValue(getLastStatistics()));
    map.insert(QStringLiteral("itemTextFormat"), getTextTemplate());
    map.insert(QStringLiteral("itemToolTipTextFormat"), getToolTipTemplate());
    if (getFilterDpName().isEmpty())
        map.insert(QStringLiteral("error"),
                   QStringLiteral("filter is not connected to configuration DP '%1' (missing DP?)").arg(getId()));
    else if (!getLastStatistics())
        map.insert(QStringLiteral("error"),
                   QStringLiteral("filter statistics is not initialized for '%1' (wrong JSON format?)").arg(getId()));
    return map;
}

QColor FilterStatisticsWidget::currentColor(const FilterStatisticsValue *source) const
{
    if (!source || source->getCurrentText().isEmpty())
        return QColor();
    return m_engine->getColor(source->getCurrentText())->getCurrentColor();
}

void FilterStatisticsWidget::applyNewColor(bool fromStatistics)
{
    QPalette palette = m_label->palette();
    const QColor back = currentColor(getBackColorSource());
    if (back.isValid())
        palette.setBrush(QPalette::All, m_label->backgroundRole(), QBrush(back));
    const QColor fore = currentColor(getForeColorSource());
    if (fore.isValid())
        palette.setBrush(QPalette::All, m_label->foregroundRole(), QBrush(fore));
    // An unchanged palette does not repaint.
    if (palette != m_label->palette())
        m_label->setPalette(palette);
    m_label->setAutoFillBackground(back.isValid());
    if (!fromStatistics && isTextRenderedOnBlink())
        m_label->setText(renderLabel(getTextTemplate(), getLastStatistics()));
}

void FilterStatisticsWidget::setNewToolTip(const QString &toolTip)
{
    m_label->setToolTip(toolTip);
}

bool FilterStatisticsWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        int button = 0;
        switch (mouse->button()) {
        case Qt::LeftButton:
            button = 1;
            break;
        case Qt::MiddleButton:
            button = 2;
            break;
        case Qt::RightButton:
            button = 3;
            break;
        default:
            break;
        }
        QPointF pos = mouse->localPos();
        if (auto *widget = qobject_cast<QWidget *>(watched); widget && widget != this)
            pos += QPointF(widget->mapTo(this, QPoint(0, 0)));
        emit mousePressed(this, button, int(std::lround(pos.x())), int(std::lround(pos.y())));
    } else if (event->type() == QEvent::MouseButtonRelease) {
        emit mouseClicked(this);
    }
    return QFrame::eventFilter(watched, event);
}

void FilterStatisticsWidget::blinkHandler(const QString &name, const QColor &)
{
    if (isColorUsed(name))
        applyNewColor(false);
}

void FilterStatisticsWidget::statsSourceChanged(const FilterStatistics *stats)
{
    for (FilterStatisticsValue *value : getPlaceholders())
        value->takeStatistics(stats);
    m_label->setText(renderLabel(getTextTemplate(), stats));
    setNewToolTip(renderLabel(getToolTipTemplate(), stats));
    applyNewColor(true);
    emit statsChanged(stats);
    emit statsContentChanged(getFilterDpName(), getStatisticsAsMap());
}

QString FilterStatisticsWidget::renderLabel(const QString &templ, const FilterStatistics *stats) const
{
    QString text = templ;
    const QMap<QString, FilterStatisticsValue *> &placeholders = getPlaceholders();
    for (auto it = placeholders.constBegin(); it != placeholders.constEnd(); ++it) {
        if (text.contains(it.key()))
            text.replace(it.key(), getReplacementString(it.value(), stats, it.key()));
    }
    return text;
}
