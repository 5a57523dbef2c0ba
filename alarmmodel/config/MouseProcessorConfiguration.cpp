#include "MouseProcessorConfiguration.h"

#include "JsonFieldReader.h"

bool MouseProcessorConfiguration::operator==(const MouseProcessorConfiguration &other) const
{
    return m_processByWidget == other.m_processByWidget && m_ctrlLibrary == other.m_ctrlLibrary &&
           m_ctrlFunction == other.m_ctrlFunction;
}

QJsonObject MouseProcessorConfiguration::toJson() const
{
    return QJsonObject{{QStringLiteral("processByWidget"), m_processByWidget},
                       {QStringLiteral("ctrlLibrary"), m_ctrlLibrary},
                       {QStringLiteral("ctrlFunction"), m_ctrlFunction}};
}

bool MouseProcessorConfiguration::fromJson(const QJsonObject &object, const QString &path, QString &error)
{
    MouseProcessorConfiguration read;
    JsonFieldReader r(object, path, error);
    r.checkKnownKeys({QStringLiteral("processByWidget"), QStringLiteral("ctrlLibrary"), QStringLiteral("ctrlFunction")});
    r.readBool(QStringLiteral("processByWidget"), read.m_processByWidget);
    r.readString(QStringLiteral("ctrlLibrary"), read.m_ctrlLibrary);
    r.readString(QStringLiteral("ctrlFunction"), read.m_ctrlFunction);
    if (r.ok() && !read.m_processByWidget && (read.m_ctrlLibrary.isEmpty() || read.m_ctrlFunction.isEmpty()))
        r.fail(QStringLiteral("'%1': processing by CTRL needs 'ctrlLibrary' and 'ctrlFunction'").arg(path));
    if (!r.ok())
        return false;
    *this = read;
    return true;
}
