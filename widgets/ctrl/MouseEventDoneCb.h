#pragma once

#include "DoneCB.h"
#include "MenuDescription.h"
#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QVariantList>

// Carries the answer of a CTRL mouse-event function: a menu description,
// announced only when valid, together with the arguments of the call. It does
// not refer back to the processor that started the call; the processor is
// connected to its signal, and Qt drops that connection when either is gone.
class WIDGETS_EXPORT MouseEventDoneCb : public QObject, public DoneCB, public MsgLoggingProducer
{
    Q_OBJECT
public:
    MouseEventDoneCb(const MsgLoggingProducer *logger, const QString &function, const QList<QVariant> &args);
    // A copy without the original's connections.
    MouseEventDoneCb(const MouseEventDoneCb &other);
    ~MouseEventDoneCb() override;

    void execute(const Variable *result) override;
    DoneCB *clone() const override;

    const QString &getFunction() const { return m_function; }
    const QList<QVariant> &getArgs() const { return m_args; }

signals:
    void menuRequested(const QSharedPointer<MenuDescription> &menu, const QVariantList &args);

private:
    QString m_function;
    QList<QVariant> m_args;
};
