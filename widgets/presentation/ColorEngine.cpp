#include "ColorEngine.h"

#include "FileSysSlim.h"
#include "Resources.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QRegExp>
#include <QRegularExpression>
#include <QTextStream>
#include <QTimer>

QSharedPointer<ColorEngine> ColorEngine::m_instance;

namespace {

const int BlinkIntervalMs = 125;

// The whole pattern must start at the beginning of `rest`; returns the matched
// text, empty when it does not.
QString matchAtStart(const QRegExp &pattern, const QString &rest)
{
    QRegExp re(pattern);
    if (re.indexIn(rest) != 0)
        return QString();
    return re.cap(0);
}

} // namespace

QSharedPointer<ColorEngine> ColorEngine::getInstance(const MsgLoggingProducer *producer)
{
    if (!m_instance) {
        m_instance.reset(new ColorEngine(producer, nullptr));
        m_instance->loadAllColorDbs();
        // The engine and its timer go with the application object, not at
        // static destruction after it.
        qAddPostRoutine([] { m_instance.reset(); });
    }
    return m_instance;
}

ColorEngine::ColorEngine(const MsgLoggingProducer *producer, QObject *parent)
    : QObject(parent), ColorUsageCounter(producer), m_blinkTimer(new QTimer(this))
{
    m_blinkTimer->setInterval(BlinkIntervalMs);
    connect(m_blinkTimer, &QTimer::timeout, this, &ColorEngine::blinkingTimeout);
    m_blinkTimer->start();
}

ColorEngine::~ColorEngine() = default;

QSharedPointer<Color> ColorEngine::getColor(const QString &name) const
{
    const auto it = m_colors.constFind(name);
    if (it != m_colors.constEnd())
        return it.value();
    auto color = QSharedPointer<Color>::create(this, name);
    parseColorValue(this, color, name);
    color->ensureNotEmpty();
    m_colors.insert(name, color);
    return color;
}

void ColorEngine::loadAllColorDbs()
{
    for (const QString &file : getColorDbs())
        addColorDatabase(file);
    addApplicationPaletteColors();
    resoveAliases();
}

QVector<QString> ColorEngine::getColorDbs() const
{
    QVector<QString> files;
    const QStringList &paths = Resources::pathes_;
    const int count = paths.size();
    for (int level = 1; level <= count + 1; ++level) {
        const QString path = level <= count ? paths.at(count - level) : Resources::getBasePath();
        if (path.isEmpty())
            continue; // no base path: not the working directory either
        QDir dir(path + QStringLiteral("colorDB") + QLatin1Char(FileSysSlim::PATH_CHAR));
        if (dir.exists())
            addColorDbOfDir(dir, files);
    }
    return files;
}

void ColorEngine::addColorDbOfDir(QDir &dir, QVector<QString> &files) const
{
    for (const QFileInfo &info : dir.entryInfoList(QDir::Files | QDir::Readable))
        files.append(info.absoluteFilePath());
    const QString here = dir.canonicalPath();
    for (const QFileInfo &info : dir.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        // A link back up the tree would never end.
        const QString target = info.canonicalFilePath();
        if (info.isSymLink() && (here == target || here.startsWith(target + QLatin1Char('/'))))
            continue;
        QDir sub(info.absoluteFilePath());
        addColorDbOfDir(sub, files);
    }
}

void ColorEngine::addColorDatabase(const QString &file)
{
    const QMap<QString, QSharedPointer<Color>> colors = parseColorDatabaseFile(this, file);
    for (auto it = colors.constBegin(); it != colors.constEnd(); ++it)
        m_colors.insert(it.key(), it.value());
}

QMap<QString, QSharedPointer<Color>> ColorEngine::parseColorDatabaseFile(const MsgLoggingProducer *producer,
                                                                         const QString &file)
{
    QMap<QString, QSharedPointer<Color>> colors;
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly | QIODevice::Text)) {
        // Said once, at loading: otherwise the operator only sees black where
        // the colours of this file should be, with nothing to say why.
        ASLOG(producer, MsgLoggerEnums::Warning,
              QStringLiteral("color database cannot be read, skipped: %1 (%2)").arg(file, in.errorString()));
        return colors;
    }
    QTextStream stream(&in);
    while (!stream.atEnd()) {
        const QSharedPointer<Color> color = parseColorLine(producer, stream.readLine());
        if (color)
            colors.insert(color->getName(), color);
    }
    return colors;
}

QSharedPointer<Color> ColorEngine::parseColorLine(const MsgLoggingProducer *producer, QString line)
{
    static const QRegExp named(QStringLiteral("\\s*(\"(?:\\s*\\w+\\s*)+\")(\\s+N\\s+)(.*)"));
    static const QRegExp alias(QStringLiteral("\\s*(\"(?:\\s*\\w+\\s*)+\")\\s+(\"(?:\\s*\\w+\\s*)+\")\\s*"));
    static const QRegExp numbers(QStringLiteral("(\\s*\\d+\\s*)+"));

    QString name;
    QString value;
    QRegExp re(named);
    if (re.exactMatch(line)) {
        name = re.cap(1);
        value = re.cap(3);
    } else if ((re = alias).exactMatch(line)) {
        name = re.cap(1);
        value = re.cap(2);
    } else if (QRegExp(numbers).exactMatch(line)) {
        return QSharedPointer<Color>();
    } else {
        ASLOG(producer, MsgLoggerEnums::Warning, QStringLiteral("the syntax of color line was not recognized: ") + line);
        return QSharedPointer<Color>();
    }
    name = name.trimmed().remove(QLatin1Char('"'));
    auto color = QSharedPointer<Color>::create(producer, name);
    if (!parseColorValue(producer, color, value.trimmed()))
        return QSharedPointer<Color>();
    return color;
}

bool ColorEngine::parseColorValue(const MsgLoggingProducer *producer, QSharedPointer<Color> &color,
                                  const QString &value)
{
    static const QRegExp blinkingValue(QStringLiteral("<.+>"));
    QString rest = value;
    const bool blinking = QRegExp(blinkingValue).exactMatch(value);
    if (blinking)
        rest = value.mid(1, value.size() - 2).trimmed();
    while (!rest.isEmpty()) {
        if (!parseNextColorDef(producer, rest, blinking, color)) {
            ASLOG(producer, MsgLoggerEnums::Warning,
                  QStringLiteral("failed to parse color definition: ") + value + QStringLiteral(", stopped on: ") + rest);
            return false;
        }
    }
    return true;
}

bool ColorEngine::parseNextColorDef(const MsgLoggingProducer *producer, QString &rest, bool blinking,
                                    QSharedPointer<Color> &color)
{
    static const QRegExp digits(QStringLiteral("\\d+"));
    QColor taken = takeColor255Based(producer, rest);
    if (!taken.isValid())
        taken = takeColor100Based(producer, rest);
    QString aliasName;
    if (!taken.isValid()) {
        aliasName = takeColorAlias(producer, rest);
        if (aliasName.isEmpty()) {
            ASLOG(producer, MsgLoggerEnums::Warning,
                  QStringLiteral("unexpected syntax: don't known how to take next color from: ") + rest);
            return false;
        }
    }
    int duration = 0;
    if (blinking) {
        const QString number = matchAtStart(digits, rest);
        if (number.isEmpty())
            return true; // a phase without a duration is dropped
        duration = number.toInt();
        removeProcessedStringPart(number, rest);
        if (duration < 1) {
            rest.clear(); // ends the value
            return true;
        }
    }
    if (aliasName.isEmpty())
        color->addEntry(QSharedPointer<Color::ColorEntry>::create(producer, taken, duration));
    else
        color->addEntry(QSharedPointer<Color::ColorEntry>::create(producer, aliasName, duration));
    return true;
}

namespace {
// The numbers of a matched "{r,g,b[,a]}" or "[r,g,b[,a]]", in order; false
// when one does not fit an int (a colour file may hold any digits).
bool readComponents(const QString &matched, int (&c)[4], int &read)
{
    static const QRegularExpression number(QStringLiteral("\\d+"));
    read = 0;
    QRegularExpressionMatchIterator it = number.globalMatch(matched);
    while (it.hasNext() && read < 4) {
        bool ok = false;
        c[read++] = it.next().captured().toInt(&ok);
        if (!ok)
            return false;
    }
    return true;
}
} // namespace

QColor ColorEngine::takeColor255Based(const MsgLoggingProducer *producer, QString &rest)
{
    static const QRegExp pattern(QStringLiteral("\\{\\s*\\d+(\\s*,\\s*\\d+){2,3}\\s*\\}"));
    const QString matched = matchAtStart(pattern, rest);
    if (matched.isEmpty())
        return QColor();
    ASLOG(producer, MsgLoggerEnums::Trace, QStringLiteral("255 based: ") + matched);
    removeProcessedStringPart(matched, rest);
    int c[4] = {0, 0, 0, 0};
    int read = 0;
    if (!readComponents(matched, c, read))
        return QColor();
    if (read == 3)
        c[3] = 255;
    for (int component : c) {
        if (component < 0 || component > 255)
            return QColor(); // as QColor would make it, without its console warning
    }
    return QColor(c[0], c[1], c[2], c[3]);
}

QColor ColorEngine::takeColor100Based(const MsgLoggingProducer *producer, QString &rest)
{
    static const QRegExp pattern(QStringLiteral("\\[\\s*\\d+(\\s*,\\s*\\d+){2,3}\\s*\\]"));
    const QString matched = matchAtStart(pattern, rest);
    if (matched.isEmpty())
        return QColor();
    ASLOG(producer, MsgLoggerEnums::Trace, QStringLiteral("100 based: ") + matched);
    removeProcessedStringPart(matched, rest);
    int c[4] = {0, 0, 0, 0};
    int read = 0;
    if (!readComponents(matched, c, read))
        return QColor();
    if (read == 3)
        c[3] = 100;
    // Truncated on purpose, as the platform does: 100 % gives 254.
    int scaled[4];
    for (int i = 0; i < 4; ++i) {
        scaled[i] = int(c[i] * 2.55);
        if (scaled[i] < 0 || scaled[i] > 255)
            return QColor();
    }
    return QColor(scaled[0], scaled[1], scaled[2], scaled[3]);
}

QString ColorEngine::takeColorAlias(const MsgLoggingProducer *producer, QString &rest)
{
    static const QRegExp pattern(QStringLiteral("\"(\\s*\\w+\\s*)+\""));
    const QString matched = matchAtStart(pattern, rest);
    if (matched.isEmpty())
        return QString();
    ASLOG(producer, MsgLoggerEnums::Trace, QStringLiteral("alias: ") + matched);
    removeProcessedStringPart(matched, rest);
    return QString(matched).remove(QLatin1Char('"'));
}

void ColorEngine::removeProcessedStringPart(const QString &processed, QString &rest)
{
    rest = rest.mid(processed.size()).trimmed();
    if (rest.startsWith(QLatin1Char(',')))
        rest = rest.mid(1).trimmed();
}

void ColorEngine::addApplicationPaletteColors()
{
    addApplicationPaletteColor(QStringLiteral("_3DFace"), QPalette::Window);
    addApplicationPaletteColor(QStringLiteral("_3DText"), QPalette::WindowText);
    addApplicationPaletteColor(QStringLiteral("_Button"), QPalette::Button);
    addApplicationPaletteColor(QStringLiteral("_ButtonText"), QPalette::ButtonText);
    addApplicationPaletteColor(QStringLiteral("_ButtonShadow"), QPalette::Shadow);
    addApplicationPaletteColor(QStringLiteral("_Window"), QPalette::Base);
    addApplicationPaletteColor(QStringLiteral("_WindowText"), QPalette::Text);
    addApplicationPaletteColor(QStringLiteral("_ToolTip"), QPalette::ToolTipBase);
    addApplicationPaletteColor(QStringLiteral("_ToolTipText"), QPalette::ToolTipText);
    const QString transparent = QStringLiteral("_Transparent");
    m_colors.insert(transparent, QSharedPointer<Color>::create(this, transparent, QColor(0, 0, 0, 0)));
}

void ColorEngine::addApplicationPaletteColor(const QString &name, QPalette::ColorRole role)
{
    // Without a GUI application (a console host) the default palette stands in.
    const QPalette palette = qobject_cast<QGuiApplication *>(QCoreApplication::instance()) ? QGuiApplication::palette()
                                                                                            : QPalette();
    m_colors.insert(name, QSharedPointer<Color>::create(this, name, palette.color(QPalette::Active, role)));
}

void ColorEngine::resoveAliases()
{
    for (const QSharedPointer<Color> &color : qAsConst(m_colors))
        color->resolveAliases(m_colors);
}

void ColorEngine::blinkingTimeout()
{
    // A receiver may look up a new name, which inserts into the map: walk a
    // snapshot.
    const QMap<QString, QSharedPointer<Color>> colors = m_colors;
    for (auto it = colors.constBegin(); it != colors.constEnd(); ++it) {
        Color &color = *it.value();
        if (color.m_entries.size() < 2)
            continue;
        if (++color.m_tickCounter != color.m_entries.at(color.m_currentIndex)->getDuration())
            continue;
        color.m_tickCounter = 0;
        color.m_currentIndex = (color.m_currentIndex + 1) % color.m_entries.size();
        if (isColorUsed(it.key()))
            emit colorChanged(it.key(), color.m_entries.at(color.m_currentIndex)->getColor());
    }
}
