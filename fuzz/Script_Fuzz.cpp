// The readers of image scripts and of the settings texts around them. First byte: which property to check.

#include "frame/text/Text_Utilities.h"
#include "imaging/Script_Interpreter.h"
#include "imaging/Script_Utilities.h"

#include <cstdlib>

namespace {

void Require(bool holds)
{
    if (!holds) std::abort();
}

/// Reads one item with the reader of its kind and writes it again; what the writer gives reads as the same.
void Read_And_Write(const QString& item)
{
    float a = 0, b = 0, c = 0;
    int left = 0, top = 0, right = 0, bottom = 0, method = 0;
    Gamma_Channel red, green, blue;
    Unsharp_Fields fields;
    QString body;
    if (Parse_ConOpt_Item(item, a, b, method))
        Require(bool(Parse_ConOpt_Item(Format_ConOpt_Item(a, b, method), a, b, method)));
    if (Parse_SatVal_Item(item, a, b)) Require(bool(Parse_SatVal_Item(Format_SatVal_Item(a, b), a, b)));
    if (Parse_ColBal_Item(item, a, b, c)) Require(bool(Parse_ColBal_Item(Format_ColBal_Item(a, b, c), a, b, c)));
    if (Parse_Gamma_Item(item, red, green, blue))
        Require(bool(Parse_Gamma_Item(Format_Gamma_Item(red, green, blue), red, green, blue)));
    if (Parse_Crop_Item(item, left, top, right, bottom))
        Require(bool(Parse_Crop_Item(Format_Crop_Item(left, top, right, bottom), left, top, right, bottom)));
    if (Parse_Scale_Item(item, left, top, method, right, bottom) && method > 0)
        Require(bool(
            Parse_Scale_Item(Format_Scale_Item(left, top, method, right, bottom), left, top, method, right, bottom)));
    if (Parse_Unsharp_Item(item, fields) && fields.component != 0)
        Require(bool(Parse_Unsharp_Item(Format_Unsharp_Item(fields), fields)));
    if (Parse_Blur_Item(item, a, left, method) && method != 0)
        Require(bool(Parse_Blur_Item(Format_Blur_Item(a, left, method), a, left, method)));
    if (Parse_Text_Item(item, body)) {
        const QString before = body;
        Require(Parse_Text_Item(Format_Text_Item(body), body) && body == before);
    }
}

/// A script without Text items, once in its normal form, stays in it.
void Split_And_Join(const QString& script)
{
    Script_Item_Array items, again;
    if (Parse_Script_Items(script, items) != Script_Status::Complete) return;
    Require(items.Count() <= items.Upper_Bound());
    bool has_text = false;
    for (int i = 1; i <= items.Count(); ++i) {
        Read_And_Write(items.Item(i).Script_Item_String);
        has_text = has_text || items.Item(i).Script_Item_Type == int(Script_Item_Kind::Text);
    }
    const QString normal = Join_Script_Items(items);
    if (has_text) return;
    Require(Parse_Script_Items(normal, again) == Script_Status::Complete);
    Require(Join_Script_Items(again) == normal);
}

/// Every reader moves on, and none leaves the text by more than one place.
void Read_Settings(const QString& text)
{
    int position = 1;
    while (position <= text.size()) {
        const int before = position;
        bool comment = false, enabled = false;
        QString keyword, value;
        double number = 0;
        Read_Keyword(text, position, comment, enabled, keyword);
        Read_Quoted_String(text, position, value, true);
        Read_Number(text, position, number, -1e6, 1e6, true);
        Skip_To_Next_Record(text, position);
        Require(position > before && position <= text.size() + 1);
    }
}

void Match(const QString& text)
{
    const auto half = text.size() / 2;
    const QString pattern = text.left(half).left(100), subject = text.mid(half).left(1000);
    const auto compiled = Like_Pattern::Compile(pattern, Like_Pattern::Compare::Text);
    if (!compiled) return;
    const bool whole = compiled->Matches(subject);
    const auto first = compiled->First_In(subject), last = compiled->Last_In(subject);
    Require((first.begin == 0) == (last.begin == 0));
    Require(!whole || subject.isEmpty() || first.begin > 0);
    if (first.begin > 0)
        Require(compiled->Matches(QStringView(subject).mid(first.begin - 1, first.end - first.begin + 1)));
    if (last.begin > 0) Require(compiled->Matches(QStringView(subject).mid(last.begin - 1, last.end - last.begin + 1)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1, qsizetype(size - 1));
    const QString text = Decode_Text(bytes);
    switch (data[0] % 4) {
    case 0: Split_And_Join(text); break;
    case 1: Read_And_Write(text); break;
    case 2: Read_Settings(text); break;
    default:
        Match(text);
        Require(File_System_Bytes(Path_From_Bytes(bytes)) == bytes.toStdString());
        break;
    }
    return 0;
}
