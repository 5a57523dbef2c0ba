#pragma once

#include "MsgLoggerEnums.h"
#include "widgets_export.h"

#include <QColor>
#include <QDateTime>
#include <QLabel>
#include <QSharedPointer>

class DialogLogHistory;
class MsgLoggerModel;

// A status label counting the messages of the message model, coloured like
// the worst severity among them. A click opens the message history (one
// dialog per label). Every new error is announced once by criticalMessage.
class WIDGETS_EXPORT MsgLoggerStatistics : public QLabel
{
    Q_OBJECT
public:
    explicit MsgLoggerStatistics(QWidget *parent = nullptr);
    ~MsgLoggerStatistics() override;

    void setModel(const QSharedPointer<MsgLoggerModel> &model);
    QSharedPointer<MsgLoggerModel> getModel() const { return m_model; }
    // An invalid colour turns the background off.
    void setColor(const QColor &color);
    // The open history dialog, null while none exists.
    DialogLogHistory *getDialog() const { return m_dialog; }

public slots:
    void contentChanged(int count, MsgLoggerEnums::LogSeverity severity);
    void dialogDestroyed(QObject *dialog);

signals:
    void criticalMessage(const QString &text);

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QSharedPointer<MsgLoggerModel> m_model;
    DialogLogHistory *m_dialog = nullptr;
    QDateTime m_lastCritical;
    QColor m_color; // what the background shows now
};
