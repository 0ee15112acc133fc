// The reader of mark-up and both forms of slide shows. First byte: which property to check.

#include "documents/Brennick_XML_Utilities.h"
#include "frame/text/Text_Utilities.h"
#include "slides/Slide_Show_File.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

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

struct Collector final : Slide_Show_Sink {
    void Take_Folder(const QString&) override {}
    void Take_Seconds(float) override {}
    bool Take_Slide(const Slide& slide) override
    {
        Require(!slide.file.isEmpty() && slide.rotate >= 0 && slide.rotate < 360);
        slides.push_back(slide);
        return slides.size() < 1000;
    }
    bool Take_Sound(const QString& file) override { return !file.isEmpty(); }
    std::vector<Slide> slides;
};

/// What was read can be written, and reads as the same slides.
void Read_And_Write(const QString& text)
{
    Collector first, second;
    Read_Slide_Show(text, first);
    for (Slide& slide : first.slides) slide.file = u'/' + slide.file + u'x'; // full names of files, not of folders
    Require(Read_Slide_Show(Slide_Show_Text(first.slides, 2), second) != Show_End::Fault);
    Require(second.slides.size() == first.slides.size());
    for (std::size_t i = 0; i < first.slides.size(); ++i) Require(second.slides[i].rotate == first.slides[i].rotate);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const QString text = Decode_Text(QByteArray(reinterpret_cast<const char*>(data) + 1, qsizetype(size - 1)));
    switch (data[0] % 3) {
    case 0: Read_Tags(text); break;
    case 1: Read_And_Write(text); break;
    default: Require(XML_Decode(XML_Encode(text)) == text); break;
    }
    return 0;
}
