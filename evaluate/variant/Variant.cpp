#include "evaluate/variant/Variant.h"

#include "evaluate/variant/Variant_Array.h"

namespace Formula {

void Variant::Share_Array(Variant_Array* array) noexcept
{
    array_ = array;
    ++array->references;
}

Variant_Array& Variant::Writable_Array()
{
    if (array_->references > 1) {
        auto* own = new Variant_Array(*array_);
        own->references = 1;
        --array_->references;
        array_ = own;
    }
    return *array_;
}

// Arrays can hold arrays to any depth, so they are taken apart in a loop and not by their own destructors.
void Variant::Release() noexcept
{
    if (type_ == Variant_Type::String) {
        text_.~QString();
        type_ = Variant_Type::Empty;
        return;
    }
    type_ = Variant_Type::Empty;
    if (--array_->references > 0) return;
    std::vector<Variant_Array*> unused{array_};
    while (!unused.empty()) {
        const std::unique_ptr<Variant_Array> array(unused.back());
        unused.pop_back();
        for (auto& element : array->elements) {
            if (element.type_ != Variant_Type::Array) continue;
            element.type_ = Variant_Type::Empty;
            if (--element.array_->references == 0) unused.push_back(element.array_);
        }
    }
}

} // namespace Formula
