#pragma once

#include <QtCore/QString>
#include <cstdint>
#include <new>
#include <utility>

namespace Formula {

/// The kinds of a value with the classic numbers; formulas see them through VarType: never renumber. An array answers
/// Array + 12 there, being an array of variants.
enum class Variant_Type : std::uint16_t {
    Empty = 0,
    Null = 1,
    Integer = 2, ///< 16 bits
    Long = 3,    ///< 32 bits
    Single = 4,
    Double = 5,
    Date = 7, ///< days since 1899-12-30 as a double; the fraction is the time of day and counts forward, also below 0
    String = 8,
    Error = 10, ///< an argument that was left out
    Boolean = 11,
    Byte = 17,
    Array = 8192,
};

/// A Date as a type of its own, so that it is never mistaken for a Double.
struct Date_Value {
    double days = 0;
};

struct Variant_Array;

/// A value of the formula language. Numbers, dates and Booleans stand in the object itself; a string and an array are
/// shared with their copies. An array copies itself when a shared one is written to.
class Variant {
public:
    Variant() noexcept : type_(Variant_Type::Empty), long_(0) {}
    Variant(const Variant& other) : type_(other.type_) { Copy_From(other); }
    Variant(Variant&& other) noexcept : type_(other.type_) { Take_From(other); }
    explicit Variant(bool value) noexcept : type_(Variant_Type::Boolean), integer_(value ? -1 : 0) {}
    explicit Variant(std::uint8_t value) noexcept : type_(Variant_Type::Byte), byte_(value) {}
    explicit Variant(std::int16_t value) noexcept : type_(Variant_Type::Integer), integer_(value) {}
    explicit Variant(std::int32_t value) noexcept : type_(Variant_Type::Long), long_(value) {}
    explicit Variant(float value) noexcept : type_(Variant_Type::Single), single_(value) {}
    explicit Variant(double value) noexcept : type_(Variant_Type::Double), double_(value) {}
    explicit Variant(Date_Value value) noexcept : type_(Variant_Type::Date), double_(value.days) {}
    explicit Variant(QString value) noexcept : type_(Variant_Type::String), text_(std::move(value)) {}
    explicit Variant(const char*) = delete; ///< would become a Boolean
    /// Takes the array over, with the one reference that a fresh one has.
    explicit Variant(Variant_Array* fresh) noexcept : type_(Variant_Type::Array), array_(fresh) {}
    ~Variant()
    {
        if (Owns()) Release();
    }

    Variant& operator=(const Variant& other)
    {
        if (this != &other) {
            Variant copy(other);
            *this = std::move(copy);
        }
        return *this;
    }
    Variant& operator=(Variant&& other) noexcept
    {
        if (this == &other) return *this;
        if (Owns()) {
            Variant taken(std::move(other)); // other may be an element of the array that this value lets go
            Release();
            type_ = taken.type_;
            Take_From(taken);
        } else {
            type_ = other.type_;
            Take_From(other);
        }
        return *this;
    }

    static Variant Null() noexcept { return Variant(Tag{}, Variant_Type::Null); }
    static Variant Missing() noexcept { return Variant(Tag{}, Variant_Type::Error); }

    Variant_Type Type() const noexcept { return type_; }
    bool Is_Empty() const noexcept { return type_ == Variant_Type::Empty; }
    bool Is_Null() const noexcept { return type_ == Variant_Type::Null; }
    bool Is_String() const noexcept { return type_ == Variant_Type::String; }
    bool Is_Array() const noexcept { return type_ == Variant_Type::Array; }
    bool Is_Missing() const noexcept { return type_ == Variant_Type::Error; }

    // Each of these may be called only when the type is the one it names.
    bool Boolean() const noexcept { return integer_ != 0; }
    std::uint8_t Byte() const noexcept { return byte_; }
    std::int16_t Integer() const noexcept { return integer_; } ///< of a Boolean too: 0 or -1
    std::int32_t Long() const noexcept { return long_; }
    float Single() const noexcept { return single_; }
    double Double() const noexcept { return double_; } ///< of a Date too
    const QString& Text() const noexcept { return text_; }
    const Variant_Array& Array() const noexcept { return *array_; }

    QString& Writable_Text() noexcept { return text_; } ///< in place, for appending
    Variant_Array& Writable_Array();                    ///< shared with nobody after the call

    // Quick stores for values that hold neither string nor array before.
    void Set_Long(std::int32_t value) noexcept { Become(Variant_Type::Long), long_ = value; }
    void Set_Double(double value) noexcept { Become(Variant_Type::Double), double_ = value; }
    void Set_Boolean(bool value) noexcept { Become(Variant_Type::Boolean), integer_ = value ? -1 : 0; }
    void Clear() noexcept { Become(Variant_Type::Empty); }
    bool Is_Plain() const noexcept { return !Owns(); } ///< neither string nor array
    void Set_Plain(const Variant& plain) noexcept { Become(plain.type_), double_ = plain.double_; }

private:
    struct Tag {};
    Variant(Tag, Variant_Type type) noexcept : type_(type), long_(0) {}

    bool Owns() const noexcept
    {
        // The first test, of one bit of each of the two numbers, spares most values the others.
        return (unsigned(type_) & (unsigned(Variant_Type::String) | unsigned(Variant_Type::Array))) != 0 &&
               (type_ == Variant_Type::String || type_ == Variant_Type::Array);
    }
    void Become(Variant_Type type) noexcept
    {
        if (Owns()) Release();
        type_ = type;
    }
    void Copy_From(const Variant& other)
    {
        if (!Owns())
            double_ = other.double_;
        else if (type_ == Variant_Type::String)
            new (&text_) QString(other.text_);
        else
            Share_Array(other.array_);
    }
    void Take_From(Variant& other) noexcept
    {
        if (!Owns()) {
            double_ = other.double_;
        } else if (type_ == Variant_Type::String) {
            new (&text_) QString(std::move(other.text_));
            other.text_.~QString();
        } else {
            array_ = other.array_;
        }
        other.type_ = Variant_Type::Empty;
    }
    void Share_Array(Variant_Array* array) noexcept;
    void Release() noexcept; ///< lets the string or the array go; leaves an Empty

    Variant_Type type_;
    union {
        std::uint8_t byte_;
        std::int16_t integer_;
        std::int32_t long_;
        float single_;
        double double_;
        QString text_;
        Variant_Array* array_;
    };
};

static_assert(sizeof(Variant) <= 32);

} // namespace Formula
