#include "TextVar.h"

#include <QTextCodec>

#include <cstring>

TextVar::TextVar(const QString &value)
    : ScalarVar(value)
{
}

TextVar::TextVar(const CharString &value)
    : ScalarVar(value.toQString())
{
}

TextVar::TextVar(const char *utf8)
{
    if (!utf8) {
        m_valid = false;
        return;
    }
    QTextCodec::ConverterState state;
    const QTextCodec *codec = QTextCodec::codecForName("UTF-8");
    ScalarVar::setValue(codec->toUnicode(utf8, static_cast<int>(std::strlen(utf8)), &state));
    m_valid = state.invalidChars == 0 && state.remainingChars == 0;
}

void TextVar::setValue(const QString &value)
{
    ScalarVar::setValue(value);
    m_valid = true;
}

CharString TextVar::getString() const
{
    return CharString::fromQString(getValue());
}

TextVar *TextVar::clone() const
{
    return new TextVar(*this);
}

QString TextVar::formatValue() const
{
    return getValue();
}
