#include "Color.h"

Color::ColorEntry::ColorEntry(const MsgLoggingProducer *producer) : MsgLoggingProducer(producer) {}

Color::ColorEntry::ColorEntry(const MsgLoggingProducer *producer, const QColor &color, int duration)
    : MsgLoggingProducer(producer), m_color(color), m_duration(duration), m_hasColor(true)
{
}

Color::ColorEntry::ColorEntry(const MsgLoggingProducer *producer, const QString &aliasName, int duration)
    : MsgLoggingProducer(producer), m_aliasName(aliasName), m_duration(duration)
{
}

void Color::ColorEntry::findColorForAlias(const QMap<QString, QSharedPointer<Color>> &colors,
                                          QStringList &searchStack) const
{
    if (searchStack.contains(m_aliasName)) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("infinite loop detected while searching for alias: ") + m_aliasName +
                  QStringLiteral(", search stack is ") + searchStack.join(QLatin1Char(':')));
        return;
    }
    searchStack.append(m_aliasName);
    const QSharedPointer<Color> target = colors.value(m_aliasName);
    if (!target) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("alias '") + m_aliasName + QStringLiteral("' is not found in loaded colors"));
        return;
    }
    if (target->m_entries.isEmpty())
        return;
    // A blinking target lends its first phase only.
    const ColorEntry &first = *target->m_entries.first();
    if (first.isAlias() && !first.m_hasColor) {
        first.findColorForAlias(colors, searchStack);
        // Resolving never sets the flag, so an alias of an alias stays
        // without a colour; the platform behaves the same way.
        if (first.m_hasColor)
            m_color = first.m_color;
    } else {
        m_color = first.m_color;
    }
}

Color::Color(const MsgLoggingProducer *producer) : MsgLoggingProducer(producer) {}

Color::Color(const MsgLoggingProducer *producer, const QString &name) : MsgLoggingProducer(producer), m_name(name) {}

Color::Color(const MsgLoggingProducer *producer, const QString &name, const QColor &color)
    : MsgLoggingProducer(producer), m_name(name)
{
    m_entries.append(QSharedPointer<ColorEntry>::create(producer, color, -1));
}

Color::Color(const MsgLoggingProducer *producer, const QString &name, const QString &aliasName)
    : MsgLoggingProducer(producer), m_name(name)
{
    m_entries.append(QSharedPointer<ColorEntry>::create(producer, aliasName, -1));
}

QColor Color::getCurrentColor() const
{
    if (m_currentIndex < 0 || m_currentIndex >= m_entries.size())
        return QColor();
    return m_entries.at(m_currentIndex)->getColor();
}

void Color::resolveAliases(const QMap<QString, QSharedPointer<Color>> &colors)
{
    for (const QSharedPointer<ColorEntry> &entry : qAsConst(m_entries)) {
        if (entry->isAlias() && !entry->hasColor()) {
            QStringList searchStack;
            entry->findColorForAlias(colors, searchStack);
        }
    }
}

void Color::ensureNotEmpty()
{
    if (m_entries.isEmpty())
        m_entries.append(QSharedPointer<ColorEntry>::create(this, QColor(0, 0, 0, 255), -1));
}
