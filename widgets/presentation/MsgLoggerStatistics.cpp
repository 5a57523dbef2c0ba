#include "MsgLoggerStatistics.h"

#include "DialogLogHistory.h"
#include "MsgLoggerColoredModel.h"
#include "MsgLoggerModel.h"

MsgLoggerStatistics::MsgLoggerStatistics(QWidget *parent) : QLabel(parent)
{
    contentChanged(0, MsgLoggerEnums::Trace);
}

MsgLoggerStatistics::~MsgLoggerStatistics()
{
    // The dialog reports its end to dialogDestroyed: it must go while this is
    // still a label, not later among the plain QWidget's children.
    delete m_dialog;
}

void MsgLoggerStatistics::setModel(const QSharedPointer<MsgLoggerModel> &model)
{
    if (m_model == model)
        return;
    if (m_model)
        disconnect(m_model.data(), &MsgLoggerModel::contentChanged, this, &MsgLoggerStatistics::contentChanged);
    m_model = model;
    if (m_model) {
        connect(m_model.data(), &MsgLoggerModel::contentChanged, this, &MsgLoggerStatistics::contentChanged);
        contentChanged(m_model->rowCount(), m_model->worstSeverity());
    } else {
        contentChanged(0, MsgLoggerEnums::Trace);
    }
}

void MsgLoggerStatistics::setColor(const QColor &color)
{
    // A flood of messages calls this for every one; the palette is only
    // touched when the colour really changes.
    if (color == m_color)
        return;
    m_color = color;
    if (!color.isValid()) {
        setAutoFillBackground(false);
        return;
    }
    QPalette palette = this->palette();
    palette.setBrush(QPalette::All, backgroundRole(), QBrush(color, Qt::SolidPattern));
    setPalette(palette);
    setAutoFillBackground(true);
}

void MsgLoggerStatistics::contentChanged(int count, MsgLoggerEnums::LogSeverity severity)
{
    setText(tr("Messages: %1").arg(count));
    setColor(count == 0 ? QColor() : MsgLoggerColoredModel::colorOfSeverity(severity));
    if (severity != MsgLoggerEnums::Error || !m_model)
        return;
    QString text;
    const QDateTime time = m_model->getLastOfSeverity(MsgLoggerEnums::Error, m_lastCritical, text);
    if (!time.isValid())
        return;
    m_lastCritical = time;
    emit criticalMessage(text);
}

void MsgLoggerStatistics::dialogDestroyed(QObject *dialog)
{
    if (dialog == m_dialog)
        m_dialog = nullptr;
}

void MsgLoggerStatistics::mouseReleaseEvent(QMouseEvent *event)
{
    QLabel::mouseReleaseEvent(event);
    if (!m_dialog) {
        m_dialog = new DialogLogHistory(m_model, this);
        connect(m_dialog, &QObject::destroyed, this, &MsgLoggerStatistics::dialogDestroyed);
    }
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
}
