// Slide show files in both forms, as text of any kind. First byte: which property to check.

#include "frame/text/Text_Utilities.h"
#include "slides/Slide_Show_File.h"
#include "slides/Slide_Show_Finder.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

void Require(bool holds)
{
    if (!holds) std::abort();
}

bool Is_Same(const Slide& left, const Slide& right)
{
    return left.file == right.file && left.rotate == right.rotate && left.seconds == right.seconds;
}

struct Collector final : Slide_Show_Sink {
    void Take_Folder(const QString&) override {}
    void Take_Seconds(float) override {}
    bool Take_Slide(const Slide& slide) override
    {
        Require(!slide.file.isEmpty() && slide.rotate >= 0 && slide.rotate < 360);
        Require(Slide_Show_Finder::Bare_Name(slide.file).size() <= slide.file.size());
        slides.push_back(slide);
        return slides.size() < 1000;
    }
    bool Take_Sound(const QString& file) override
    {
        Require(!file.isEmpty());
        return true;
    }
    std::vector<Slide> slides;
};

std::vector<Slide> Slides_Of(const QString& text)
{
    Collector collector;
    Read_Slide_Show(text, collector);
    return collector.slides;
}

/// What was read can be written, and reads as the same slides.
void Read_And_Write(const QString& text)
{
    std::vector<Slide> slides = Slides_Of(text);
    for (Slide& slide : slides) slide.file = u'/' + slide.file + u'x'; // full names of files, not of folders
    Collector again;
    Require(Read_Slide_Show(Slide_Show_Text(slides, 2), again) != Show_End::Fault);
    Require(again.slides.size() == slides.size());
    for (std::size_t i = 0; i < slides.size(); ++i) Require(again.slides[i].rotate == slides[i].rotate);
}

/// A file that is cut off has the first slides of the whole one.
void Cut_Off(const QString& text)
{
    const QString whole = QStringLiteral("<hvSlideShow>\n") + text;
    const std::vector<Slide> all = Slides_Of(whole);
    const std::vector<Slide> some = Slides_Of(whole.left(14 + text.size() / 2));
    Require(some.size() <= all.size());
    Require(std::equal(some.begin(), some.end(), all.begin(), Is_Same));
}

/// A name of one line, quoted as the writer of keywords does it, comes back with its options.
void Quoted_Name(QString name)
{
    name.removeIf([](QChar c) { return c < u' ' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator; });
    if (name.isEmpty()) return;
    const QString line = QStringLiteral("PIC,'") + Quote_Single(name) + QStringLiteral("',ROT:90,TIM:1.5;");
    const std::vector<Slide> slides = Slides_Of(QStringLiteral("VER,00.01;\r\n") + line);
    Require(slides.size() == 1 && Is_Same(slides[0], {.file = name, .rotate = 90, .seconds = 1.5F}));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const QString text = Decode_Text(QByteArray(reinterpret_cast<const char*>(data) + 1, qsizetype(size - 1)));
    switch (data[0] % 3) {
    case 0: Read_And_Write(text); break;
    case 1: Cut_Off(text); break;
    default: Quoted_Name(text); break;
    }
    return 0;
}
