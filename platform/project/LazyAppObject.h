#pragma once

#include <QCoreApplication>
#include <QPointer>

// Holder of one of the platform's process-wide objects. The object is made on
// first use and belongs to the application object, so it goes away (and is
// made afresh on the next use) with the application; hosts never set it up.
template <class T>
class LazyAppObject
{
public:
    T *get()
    {
        if (!m_object)
            m_object = new T(QCoreApplication::instance());
        return m_object;
    }
    // The object if it exists, without making it.
    T *peek() const { return m_object; }

private:
    QPointer<T> m_object;
};
