// The reader of mark-up. First byte: which property to check.

#include "documents/Brennick_XML_Utilities.h"
#include "frame/text/Text_Utilities.h"

#include <cstdint>
#include <cstdlib>

namespace {

void Require(bool holds)
{
    if (!holds) std::abort();
}

/// Every tag moves the position on, and none leaves the text.
void Read_Tags(const QString& text)
{
    int position = 1;
    const int last = Behind_Text(text);
    XML_Read_Prolog(text, position, last);
    for (;;) {
        const int before = position;
        const XML_Tag tag = XML_Next_Tag(text, position, last);
        if (tag.Name.isEmpty()) return;
        Require(position > before && position <= last);
        for (const char* name : {"file", "folder", "time", "rotate"})
            Require(XML_Attribute(tag.Attributes, QLatin1String(name)).size() <= tag.Attributes.size());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const QString text = Decode_Text(QByteArray(reinterpret_cast<const char*>(data) + 1, qsizetype(size - 1)));
    if (data[0] % 2 == 0)
        Read_Tags(text);
    else
        Require(XML_Decode(XML_Encode(text)) == text);
    return 0;
}
