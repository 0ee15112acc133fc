#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Puts an EXIF block together for tests: fields of the first directory up to 34664, all others in the sub-directory.
class Exif_Block_Maker {
public:
    explicit Exif_Block_Maker(bool little_endian = true) : little_(little_endian) {}
    Exif_Block_Maker& Text(int tag, const std::string& text) { return Add(tag, 2, int(text.size()) + 1, text + '\0'); }
    Exif_Block_Maker& Raw(int tag, int type, int count, const std::string& bytes)
    {
        return Add(tag, type, count, bytes);
    }
    Exif_Block_Maker& Short(int tag, int value) { return Add(tag, 3, 1, Number(unsigned(value), 2)); }
    Exif_Block_Maker& Long(int tag, unsigned value) { return Add(tag, 4, 1, Number(value, 4)); }
    Exif_Block_Maker& Ratio(int tag, unsigned above, unsigned below)
    {
        return Add(tag, 5, 1, Number(above, 4) + Number(below, 4));
    }
    Exif_Block_Maker& Signed_Ratio(int tag, int above, int below)
    {
        return Add(tag, 10, 1, Number(unsigned(above), 4) + Number(unsigned(below), 4));
    }
    std::vector<std::byte> Block() const
    {
        std::vector<Field> first, second;
        for (const Field& field : fields_) (field.tag < 33000 ? first : second).push_back(field);
        first.push_back({34665, 4, 1, {}}); // its value is known once the first directory stands
        std::string block = std::string(little_ ? "II" : "MM") + Number(42, 2) + Number(8, 4);
        const std::size_t second_at = 8 + Directory(first, 8).size();
        first.back().bytes = Number(unsigned(second_at), 4);
        block += Directory(first, 8) + Directory(second, second_at);
        block.insert(0, std::string("Exif\0\0", 6));
        std::vector<std::byte> bytes(block.size());
        for (std::size_t i = 0; i < block.size(); ++i) bytes[i] = std::byte(block[i]);
        return bytes;
    }

private:
    struct Field {
        int tag;
        int type;
        int count;
        std::string bytes;
    };
    Exif_Block_Maker& Add(int tag, int type, int count, std::string bytes)
    {
        fields_.push_back({tag, type, count, std::move(bytes)});
        return *this;
    }
    std::string Number(unsigned value, int size) const
    {
        std::string bytes;
        for (int i = 0; i < size; ++i) bytes += char(value >> (8 * (little_ ? i : size - 1 - i)));
        return bytes;
    }
    std::string Directory(const std::vector<Field>& fields, std::size_t at) const
    {
        std::string entries = Number(unsigned(fields.size()), 2);
        std::string values;
        const std::size_t values_at = at + 2 + fields.size() * 12 + 4;
        for (const Field& field : fields) {
            entries +=
                Number(unsigned(field.tag), 2) + Number(unsigned(field.type), 2) + Number(unsigned(field.count), 4);
            if (field.bytes.size() <= 4) {
                entries += field.bytes + std::string(4 - field.bytes.size(), '\0');
            } else {
                entries += Number(unsigned(values_at + values.size()), 4);
                values += field.bytes;
            }
        }
        return entries + Number(0, 4) + values;
    }
    bool little_;
    std::vector<Field> fields_;
};
