#include "evaluate/library/Arguments.h"

#include "frame/files/Limits.h"

namespace Formula {

namespace {

// The codes 128 to 159 of Windows-1252; the five that are not assigned stand for themselves.
constexpr char16_t Upper_Codes[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                      0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

constexpr std::int32_t As_Program_Compares = -1; // of which there is one way here

} // namespace

Evaluated<Compare_Mode> Mode_At(Arguments arguments, std::size_t index)
{
    const auto mode = Long_At(arguments, index);
    if (!mode) return Fails(mode.error());
    if (*mode == As_Program_Compares) return Compare_Mode::Binary;
    if (*mode != 0 && *mode != 1) return Fails(Error_Number::Invalid_Call);
    return Compare_Mode(*mode);
}

Error_Number Check_Length(std::int64_t characters)
{
    return characters > Current_Limits().formula_string_characters ? Error_Number::Out_Of_String_Space
                                                                   : Error_Number::None;
}

Error_Number Check_Room(Library_Context& context, std::int64_t characters)
{
    const auto problem = Check_Length(characters);
    return problem == Error_Number::None ? context.memory.Room_For_Text(characters) : problem;
}

Error_Number Yield_Text(Variant& result, QString text)
{
    const auto problem = Check_Length(text.size());
    if (problem == Error_Number::None) result = Variant(std::move(text));
    return problem;
}

QByteArray Bytes_Of(const QString& text)
{
    QByteArray bytes(text.size() * 2, '\0');
    for (qsizetype i = 0; i < text.size(); ++i) {
        bytes[2 * i] = char(text[i].unicode() & 255);
        bytes[2 * i + 1] = char(text[i].unicode() >> 8);
    }
    return bytes;
}

QString Text_Of_Bytes(const QByteArray& bytes)
{
    QString text((bytes.size() + 1) / 2, u'\0');
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto part = char16_t(std::uint8_t(bytes[i])) << (i % 2 ? 8 : 0);
        text[i / 2] = QChar(char16_t(text[i / 2].unicode() | part));
    }
    return text;
}

QChar Character_Of_Code(int code)
{
    return code >= 128 && code < 160 ? QChar(Upper_Codes[code - 128]) : QChar(char16_t(code));
}

int Code_Of_Character(QChar character)
{
    const auto letter = character.unicode();
    if (letter < 128 || (letter >= 160 && letter < 256)) return letter;
    for (int i = 0; i < 32; ++i)
        if (Upper_Codes[i] == letter) return 128 + i;
    return '?';
}

} // namespace Formula
