// The lines of a colour database (ColorEngine::parseColorLine) and resolving
// the aliases between the colours read: loops and dangling aliases included.

#include "Color.h"
#include "ColorEngine.h"
#include "FuzzSupport.h"

#include <QMap>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const MsgLoggingProducer logger;
    QMap<QString, QSharedPointer<Color>> colors;
    const QStringList lines = fuzz::utf8(data, size).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QSharedPointer<Color> color = ColorEngine::parseColorLine(&logger, line);
        if (color)
            colors.insert(color->getName(), color);
    }
    for (const QSharedPointer<Color> &color : qAsConst(colors)) {
        color->resolveAliases(colors);
        color->ensureNotEmpty();
        color->getCurrentColor();
    }
    return 0;
}
