#include "TimeRangeEditor.h"

#include "ui_TimeRangeEditor.h"

#include <QMetaEnum>
#include <QSignalBlocker>

TimeRangeEditor::TimeRangeEditor(const TimeRange &range, QWidget *parent)
    : PopupFrame(parent), m_ui(new Ui::TimeRangeEditor), m_range(range)
{
    m_ui->setupUi(this);

    const QMetaEnum types = QMetaEnum::fromType<TimeRange::RangeType>();
    for (int i = 0; i < types.keyCount(); ++i)
        m_ui->comboBoxType->addItem(QString::fromLatin1(types.key(i)), types.value(i));
    m_ui->comboBoxType->setCurrentIndex(m_ui->comboBoxType->findData(int(m_range.getRangeType())));

    for (QDateTimeEdit *edit : {m_ui->dateTimeEditStart, m_ui->dateTimeEditEnd})
        edit->setDisplayFormat(TimeRange::getDateTimeFormat());
    setTimeSpec(m_range.getTimeSpec());

    connect(m_ui->comboBoxType, &QComboBox::textActivated, this, &TimeRangeEditor::typeSelected);
    connect(m_ui->spinBoxCount, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &TimeRangeEditor::spinValueChanged);
    connect(m_ui->dateTimeEditStart, &QDateTimeEdit::dateTimeChanged, this, &TimeRangeEditor::startTimeChanged);
    connect(m_ui->dateTimeEditEnd, &QDateTimeEdit::dateTimeChanged, this, &TimeRangeEditor::endTimeChanged);
    connect(m_ui->pushButtonStartNow, &QPushButton::clicked, this, &TimeRangeEditor::nowButtonClicked);
    connect(m_ui->pushButtonEndNow, &QPushButton::clicked, this, &TimeRangeEditor::nowButtonClicked);
}

TimeRangeEditor::~TimeRangeEditor() = default;

void TimeRangeEditor::setTimeRange(const TimeRange &range)
{
    m_range = range;
    setTimeSpec(m_range.getTimeSpec());
}

void TimeRangeEditor::setTimeSpec(Qt::TimeSpec timeSpec)
{
    m_ui->dateTimeEditStart->setTimeSpec(timeSpec);
    m_ui->dateTimeEditEnd->setTimeSpec(timeSpec);
    m_ui->lineEditTimeZone->setText(QString::fromLatin1(QMetaEnum::fromType<Qt::TimeSpec>().valueToKey(timeSpec)));
    if (m_range.getTimeSpec() != timeSpec)
        m_range.setTimeSpec(timeSpec);
    displayTimeRange(true);
}

void TimeRangeEditor::typeSelected(const QString &text)
{
    ASLOG(&m_range, MsgLoggerEnums::Trace, QStringLiteral("type selected ") + text);
    bool ok = false;
    const int value = QMetaEnum::fromType<TimeRange::RangeType>().keyToValue(text.toLatin1().constData(), &ok);
    if (!ok) {
        ASLOG(&m_range, MsgLoggerEnums::Error,
              QStringLiteral("conversion to enum value (RangeType) failed for string: ") + text);
        return;
    }
    m_range.setRangeType(static_cast<TimeRange::RangeType>(value));
    displayTimeRange(false);
    emit changed(m_range);
}

void TimeRangeEditor::spinValueChanged(int value)
{
    m_range.setValueCount(value);
    displayTimeRange(false);
    emit changed(m_range);
}

void TimeRangeEditor::startTimeChanged(const QDateTime &time)
{
    m_range.setStartTime(time);
    emit changed(m_range);
}

void TimeRangeEditor::endTimeChanged(const QDateTime &time)
{
    m_range.setEndTime(time);
    emit changed(m_range);
}

void TimeRangeEditor::nowButtonClicked()
{
    QDateTime now = QDateTime::currentDateTime();
    if (m_range.getTimeSpec() == Qt::UTC)
        now = now.toUTC();
    const QObject *source = sender();
    QDateTimeEdit *edit = nullptr;
    if (source && source == m_ui->pushButtonStartNow) {
        edit = m_ui->dateTimeEditStart;
        m_range.setStartTime(now);
    } else if (source && source == m_ui->pushButtonEndNow) {
        edit = m_ui->dateTimeEditEnd;
        m_range.setEndTime(now);
    } else {
        ASLOG(&m_range, MsgLoggerEnums::Warning,
              QStringLiteral("nowButtonClicked() from unexpected source: ")
                  + (source ? source->objectName() : QStringLiteral("NULL")));
        return;
    }
    {
        // The range holds the time already; the editor's own signal would report it twice.
        const QSignalBlocker blocker(edit);
        edit->setDateTime(now);
    }
    emit changed(m_range);
}

void TimeRangeEditor::displayTimeRange(bool forced)
{
    if (!forced && !isVisible())
        return;
    const QSignalBlocker blockType(m_ui->comboBoxType);
    const QSignalBlocker blockCount(m_ui->spinBoxCount);
    const QSignalBlocker blockStart(m_ui->dateTimeEditStart);
    const QSignalBlocker blockEnd(m_ui->dateTimeEditEnd);

    m_ui->comboBoxType->setCurrentIndex(m_ui->comboBoxType->findData(int(m_range.getRangeType())));
    const QString valueLabel = m_range.getValueLabel();
    if (!valueLabel.isEmpty()) {
        m_ui->spinBoxCount->setSuffix(valueLabel);
        m_ui->spinBoxCount->setValue(m_range.getValueCount());
        m_ui->spinBoxCount->show();
    } else {
        m_ui->spinBoxCount->hide();
    }
    m_ui->dateTimeEditStart->setDateTime(m_range.getStartTime());
    m_ui->dateTimeEditEnd->setDateTime(m_range.getEndTime());

    const bool custom = m_range.getRangeType() == TimeRange::CustomInterval;
    for (QWidget *w : std::initializer_list<QWidget *>{m_ui->dateTimeEditStart, m_ui->dateTimeEditEnd,
                                                      m_ui->pushButtonStartNow, m_ui->pushButtonEndNow})
        w->setEnabled(custom);
}

void TimeRangeEditor::showEvent(QShowEvent *event)
{
    // Changes made while hidden were not displayed; catch up now.
    PopupFrame::showEvent(event);
    displayTimeRange(false);
}
