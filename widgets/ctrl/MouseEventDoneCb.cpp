#include "MouseEventDoneCb.h"

MouseEventDoneCb::MouseEventDoneCb(const MsgLoggingProducer *logger, const QString &function,
                                   const QList<QVariant> &args)
    : MsgLoggingProducer(logger), m_function(function), m_args(args)
{
    qRegisterMetaType<QSharedPointer<MenuDescription>>("QSharedPointer<MenuDescription>");
}

MouseEventDoneCb::MouseEventDoneCb(const MouseEventDoneCb &other)
    : QObject(), DoneCB(other), MsgLoggingProducer(other), m_function(other.m_function), m_args(other.m_args)
{
}

MouseEventDoneCb::~MouseEventDoneCb() = default;

void MouseEventDoneCb::execute(const Variable *result)
{
    const auto menu = QSharedPointer<MenuDescription>::create(this, m_function, result);
    if (menu->isValid())
        emit menuRequested(menu, m_args);
}

DoneCB *MouseEventDoneCb::clone() const
{
    return new MouseEventDoneCb(*this);
}
