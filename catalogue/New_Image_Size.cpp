#include "catalogue/New_Image_Size.h"

#include "frame/text/Text_Utilities.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <vector>

std::optional<Pixel_Size> New_Image_Size(const QString& text)
{
    static const QRegularExpression separators(QStringLiteral("[,;/ ]"));
    const QStringList parts = text.split(separators, Qt::SkipEmptyParts);
    if (parts.size() != 2 || !Is_Whole_Number(parts[0]) || !Is_Whole_Number(parts[1])) return std::nullopt;
    const auto width = Long_From_Text(parts[0]);
    const auto height = Long_From_Text(parts[1]);
    if (!width || !height || *width < 1 || *height < 1) return std::nullopt;
    return Pixel_Size{*width, *height};
}

Bitmap_Handle New_White_Bitmap(Pixel_Size size)
{
    Owned_Bitmap bitmap(Count_Bitmap(Create_Empty_Bitmap_CPP(size.width, size.height, 3, 8)));
    Bitmap_Facts facts;
    if (!Get_Bitmap_Facts_CPP(bitmap.Get(), &facts)) return 0;
    const std::vector<std::uint8_t> white(std::size_t(facts.stride) * std::size_t(facts.height), 255);
    Put_Bitmap_Bytes_CPP(bitmap.Get(), white.data(), white.size());
    return bitmap.Release();
}
