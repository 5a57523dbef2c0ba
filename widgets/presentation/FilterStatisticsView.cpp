#include "FilterStatisticsView.h"

#include "AlarmsModel.h"
#include "ColorEngine.h"
#include "DpHLGroup.h"
#include "DpMsgAnswer.h"
#include "FilterStatisticsValueConsumer.h"
#include "FilterStatisticsWidget.h"
#include "Manager.h"
#include "Spoiler.h"
#include "converter.h"

#include <QFrame>
#include <QGridLayout>
#include <QVBoxLayout>

namespace {

QList<const Variable *> values(const DpItemContainer &items)
{
    QList<const Variable *> list;
    for (int i = 0; i < items.count(); ++i)
        list.append(items.at(i).getValue());
    return list;
}

} // namespace

FilterStatisticsView::FilterConfigHotLink::FilterConfigHotLink(FilterStatisticsView *view)
    : MsgLoggingProducer(view), m_view(view)
{
}

void FilterStatisticsView::FilterConfigHotLink::hotLinkCallBack(DpMsgAnswer &answer)
{
    ASLOG(this, MsgLoggerEnums::DetailedTrace, QStringLiteral("[FilterConfigHotLink] Receiving DpMsgAnswer"));
    if (!m_view)
        return;
    if (answer.hasError()) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("[FilterConfigHotLink] Receiving DpMsgAnswer error: ") + answer.getError());
        return;
    }
    answer.sort();
    parseVarList(values(answer));
}

void FilterStatisticsView::FilterConfigHotLink::hotLinkCallBack(DpHLGroup &group)
{
    ASLOG(this, MsgLoggerEnums::DetailedTrace, QStringLiteral("[FilterConfigHotLink] Receiving  DpHLGroup"));
    if (!m_view)
        return;
    if (group.hasError()) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("[FilterConfigHotLink] error arrived: ") + group.getError());
        return;
    }
    parseVarList(values(group));
}

void FilterStatisticsView::FilterConfigHotLink::parseVarList(const QList<const Variable *> &list)
{
    if (list.size() != 3) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("[FilterConfigHotLink]: list of variables contains %1, while 3 items are expected")
                  .arg(list.size()));
        return;
    }
    const auto text = [](const Variable *value) { return converter::ctrlToNative(value).toString(); };
    m_view->newDpData(text(list.at(0)), text(list.at(1)), text(list.at(2)));
}

FilterStatisticsView::FilterStatisticsView(const WildcardConfig &wildcards, QWidget *parent, Qt::WindowFlags flags)
    : QWidget(parent, flags)
    , MsgLoggingProducer(&wildcards)
    , m_wildcards(wildcards)
    , m_consumer(new FilterStatisticsValueConsumer(this))
    , m_layout(new QVBoxLayout(this))
    , m_currentFilter(this)
{
    m_layout->setContentsMargins(0, 0, 0, 0);
}

FilterStatisticsView::~FilterStatisticsView()
{
    disconnect();
    clearView();
    for (const QPointer<QWidget> &retired : qAsConst(m_retired))
        delete retired.data();
    // The consumer leaves the model when it goes.
}

void FilterStatisticsView::setConfigDp(const QString &dp)
{
    if (dp == m_configDp)
        return;
    if (!m_configDp.isEmpty())
        disconnect();
    m_configDp = dp;
    m_errorText.clear();
    if (dp.isEmpty()) {
        m_config.reset();
        clearView();
    } else {
        connect(dp, m_model, m_errorText);
    }
}

bool FilterStatisticsView::connect(const QString &dp, const QSharedPointer<AlarmsModel> &model, QString &errorText)
{
    setModel(model);
    disconnect();
    const QStringList names{dp + QStringLiteral(".SetName"), dp + QStringLiteral(".ConfigDp"),
                            dp + QStringLiteral(".SetJSON")};
    DpIdentList ids;
    if (!converter::getDpIds(this, names, ids, errorText))
        return false;
    m_hotLink.reset(new FilterConfigHotLink(this));
    if (!Manager::dpConnect(ids, Manager::eventId, m_hotLink.get(), true)) {
        errorText = QStringLiteral("Connection to DP %1 failed").arg(dp);
        m_hotLink.reset();
        m_connected = false;
        return false;
    }
    m_ids = ids;
    m_connected = true;
    return true;
}

void FilterStatisticsView::disconnect()
{
    if (!m_connected)
        return;
    if (!Manager::dpDisconnect(m_ids, m_hotLink.get(), Manager::eventId))
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("Failed to disconnect in FilterStatisticsView destructor"));
    m_hotLink.reset();
    m_ids.clear();
    m_connected = false;
}

void FilterStatisticsView::setModel(const QSharedPointer<AlarmsModel> &model)
{
    if (model == m_model)
        return;
    m_model = model;
    // The consumer registers with the model itself and leaves it when it goes.
    m_consumer->setModel(m_model);
    for (FilterStatisticsWidget *widget : statisticsWidgets())
        widget->setModel(m_model);
}

void FilterStatisticsView::setSingleRowPerPair(bool single)
{
    m_singleRowPerPair = single;
    m_consumer->setSingleRowPerPair(single);
    for (FilterStatisticsWidget *widget : statisticsWidgets())
        widget->setSingleRowPerPair(single);
}

void FilterStatisticsView::setUseSpoiler(bool use)
{
    if (use == m_useSpoiler)
        return;
    m_useSpoiler = use;
    // Only a horizontal bar is rebuilt at once; a vertical one takes the
    // setting with its next configuration.
    if (m_orientation == Qt::Horizontal) {
        clearView();
        buildView();
    }
}

void FilterStatisticsView::setOrientation(Qt::Orientation orientation)
{
    if (orientation == m_orientation)
        return;
    m_orientation = orientation;
    clearView();
    buildView();
}

QString FilterStatisticsView::newDpData(const QString &setName, const QString &configDp, const QString &json)
{
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("newDataData(") + setName + QLatin1Char(',') + configDp + QLatin1Char(',') + json +
              QLatin1Char(')'));
    clearView();
    if (setName.isEmpty() || configDp.isEmpty() || json.isEmpty()) {
        m_config.reset();
        return QString();
    }
    m_setName = setName;
    m_setConfigDp = configDp;
    if (!m_config.parse(json, m_wildcards)) {
        const QString error = m_config.isErrorFullMessage()
                                  ? m_config.getErrorText()
                                  : QStringLiteral("Error parsing JSON for filter set ") + setName +
                                        QStringLiteral(": ") + m_config.getErrorText();
        ASLOG(this, MsgLoggerEnums::Error, error);
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("input JSON text is: ") + json);
        m_config.reset();
        return error;
    }
    buildView();
    if (m_content)
        compareWithCurrentFilter(m_currentFilter);
    return QString();
}

void FilterStatisticsView::buildView()
{
    switch (m_config.getViewType()) {
    case FilterViewConfiguration::Grid:
        buildViewGrid();
        break;
    case FilterViewConfiguration::Tree:
        buildViewTree();
        break;
    default:
        break;
    }
}

void FilterStatisticsView::buildViewGrid()
{
    clearView();
    const FilterGridViewConfiguration &grid = m_config.getGridConfig();
    m_grid = createGridContainer(grid);
    int lastRow = 0;
    int lastColumn = 0;
    for (const FilterViewItemConfiguration &item : grid.getItems()) {
        m_grid->addWidget(createWidgetForGrid(grid, item), item.getRow(), item.getColumn());
        lastRow = qMax(lastRow, item.getRow());
        lastColumn = qMax(lastColumn, item.getColumn());
    }
    // The filler keeps the cells packed at the start.
    auto *filler = new QWidget(m_grid->parentWidget());
    if (m_orientation == Qt::Horizontal) {
        m_grid->addWidget(filler, 0, lastColumn + 1);
        m_grid->setColumnStretch(lastColumn + 1, 10);
    } else {
        m_grid->addWidget(filler, lastRow + 1, 0);
        m_grid->setRowStretch(lastRow + 1, 10);
    }
    if (auto *spoiler = qobject_cast<Spoiler *>(m_content)) {
        spoiler->updateContentGeometry();
        // A new spoiler starts open; show the content it says it shows.
        if (spoiler->isExpanded())
            spoiler->toggleClicked(true);
    }
}

void FilterStatisticsView::buildViewTree()
{
    ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("Filter view organized as tree is not implemented yet"));
}

void FilterStatisticsView::clearView()
{
    if (!m_content)
        return;
    // Cells stop counting at once; the widgets themselves go later, since
    // this may run inside one of their own signals.
    for (FilterStatisticsWidget *widget : statisticsWidgets())
        widget->setModel(QSharedPointer<AlarmsModel>());
    m_layout->removeWidget(m_content);
    m_content->hide();
    m_content->setParent(nullptr);
    m_content->deleteLater();
    m_retired.append(m_content);
    m_content = nullptr;
    m_grid = nullptr;
}

QGridLayout *FilterStatisticsView::createGridContainer(const FilterGridViewConfiguration &grid)
{
    auto *frame = new QFrame;
    frame->setFrameStyle(grid.getFrameShape() | grid.getFrameShadow());
    frame->setLineWidth(grid.getLineWidth());
    frame->setMidLineWidth(grid.getMidLineWidth());
    auto *layout = new QGridLayout(frame);
    layout->setSpacing(grid.getSpacing());
    layout->setContentsMargins(0, 0, 0, 0);

    const QString colorName = grid.getBackColor();
    if (colorName != QLatin1String("none")) {
        const QSharedPointer<ColorEngine> engine = ColorEngine::getInstance(this);
        // The engine turns any name into a colour; a name it neither holds
        // nor can read as a colour value is a configuration error here.
        QSharedPointer<Color> probe = QSharedPointer<Color>::create(nullptr, colorName);
        const bool known = engine->getColorMap().contains(colorName) ||
                           (ColorEngine::parseColorValue(nullptr, probe, colorName) && !probe->getEntries().isEmpty());
        const QColor color = known ? engine->getColor(colorName)->getCurrentColor() : QColor();
        if (color.isValid()) {
            QPalette palette = frame->palette();
            palette.setBrush(frame->backgroundRole(), QBrush(color));
            frame->setPalette(palette);
            frame->setAutoFillBackground(true);
        } else {
            ASLOG(this, MsgLoggerEnums::Warning,
                  QStringLiteral("Invalid color name '") + colorName +
                      QStringLiteral("' for grid container of filter statistics"));
        }
    }

    if (m_useSpoiler) {
        auto *spoiler = new Spoiler(grid.getTitle().isEmpty() ? tr("Statistics") : grid.getTitle(), this);
        auto *content = new QVBoxLayout;
        content->setContentsMargins(0, 0, 0, 0);
        content->addWidget(frame);
        spoiler->setContentLayout(content);
        m_content = spoiler;
    } else {
        frame->setParent(this);
        m_content = frame;
    }
    m_layout->addWidget(m_content);
    return layout;
}

QWidget *FilterStatisticsView::createWidgetForGrid(const FilterGridViewConfiguration &grid,
                                                   const FilterViewItemConfiguration &item)
{
    auto *widget = new FilterStatisticsWidget(this, m_grid ? m_grid->parentWidget() : nullptr);
    widget->setSingleRowPerPair(m_singleRowPerPair);
    widget->setFrameStyle(grid.getFrameShape() | grid.getFrameShadow());
    widget->setLineWidth(grid.getLineWidth());
    widget->setMidLineWidth(grid.getMidLineWidth());
    QObject::connect(widget, &FilterStatisticsWidget::statsChanged, this, &FilterStatisticsView::statsChanged);
    QObject::connect(widget, &FilterStatisticsWidget::statsContentChanged, this,
                     &FilterStatisticsView::statsContentChanged);
    QObject::connect(widget, &FilterStatisticsWidget::mousePressed, this, &FilterStatisticsView::filterMousePressed);
    QObject::connect(widget, &FilterStatisticsWidget::mouseClicked, this, &FilterStatisticsView::filterMouseClicked);
    widget->configure(item);
    // A cell without its own filter datapoint belongs to the set's.
    if (item.getFilterDpName().isEmpty())
        widget->setFilterDpName(m_setConfigDp);
    widget->setModel(m_model);
    widget->show();
    return widget;
}

QMap<QString, QVariant> FilterStatisticsView::getFilterStatistics(const QString &id) const
{
    for (FilterStatisticsWidget *widget : statisticsWidgets()) {
        if (widget->getId() == id)
            return widget->getStatisticsAsMap();
    }
    return {{QStringLiteral("error"), QStringLiteral("filter with ID '%1' not found").arg(id)}};
}

QStringList FilterStatisticsView::getAllIds() const
{
    QStringList ids;
    for (FilterStatisticsWidget *widget : statisticsWidgets()) {
        if (!ids.contains(widget->getId()))
            ids.append(widget->getId());
    }
    return ids;
}

void FilterStatisticsView::compareWithCurrentFilter(const SourceAndFilter &current)
{
    m_currentFilter = current;
    m_consumer->compareWithCurrentFilter(current);
    for (FilterStatisticsWidget *widget : statisticsWidgets())
        widget->compareWithCurrentFilter(current);
}

QList<FilterStatisticsWidget *> FilterStatisticsView::statisticsWidgets() const
{
    return findChildren<FilterStatisticsWidget *>();
}
