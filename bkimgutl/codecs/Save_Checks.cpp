#include "bkimgutl/codecs/Save_Checks.h"

#include "bkimgutl/codecs/Jpeg_Segments.h"
#include "bkimgutl/codecs/Stored_Text.h"
#include "frame/files/Limits.h"

#include <algorithm>
#include <optional>
#include <unistd.h>

namespace {

constexpr std::size_t Longest_Character = 4; // bytes in UTF-8

Result<void> Check_Text(const std::string& text, std::size_t limit, const char* name)
{
    if (text.size() <= limit) return {};
    return Failure(std::string("the ") + name + " has " + std::to_string(text.size()) + " bytes, " +
                   std::to_string(limit) + " are the limit");
}

/// In UTF-8; nothing without one that can be read.
std::optional<std::string> Comment_Of_Parent(const Save_Request& request)
{
    if (request.parent.empty()) return std::nullopt;
    const auto file = Regular_File::Open(request.parent);
    if (!file) return std::nullopt;
    const auto stored =
        (Type_From_Signature(*file) == Image_File_Type::TIFF ? TIFF_Codec() : JPEG_Codec()).Read_Comment(*file);
    return stored ? std::optional(UTF8_From_Stored(*stored)) : std::nullopt;
}

/// `comment` begins as the whole one does and ends where a buffer of `limit` bytes ends, or a character before.
bool Is_Cut_From(const std::string& whole, const std::string& comment, std::size_t limit)
{
    const std::size_t same = limit - std::min(limit, Longest_Character);
    return comment.size() <= limit && comment.size() > same && whole.compare(0, same, comment, 0, same) == 0;
}

} // namespace

std::size_t Longest_Comment()
{
    return std::size_t(Current_Limits().comment_bytes) + Longest_Segment_Data;
}

Result<void> Check_Script(const Save_Request& request)
{
    return Check_Text(request.script, std::size_t(Current_Limits().script_bytes), "script");
}

Result<std::string> Comment_To_Store(const Save_Request& request, std::size_t most)
{
    const std::size_t limit = std::size_t(Current_Limits().comment_bytes);
    if (request.comment.size() + Longest_Character <= limit) return request.comment; // nothing has cut it
    const auto whole = Comment_Of_Parent(request);
    const bool is_kept =
        whole && whole->size() > limit && (request.comment == *whole || Is_Cut_From(*whole, request.comment, limit));
    const std::string& comment = is_kept ? *whole : request.comment;
    if (auto good = Check_Text(comment, is_kept ? most : limit, "description"); !good)
        return tl::make_unexpected(good.error());
    return comment;
}

Result<void> Check_Damage(const Save_Request& request)
{
    if (request.bitmap == nullptr) return {}; // the coded data stays as it is
    const auto& origin = request.bitmap->Origin();
    if (!origin || !origin->damaged) return {};
    const std::string aside = Attributes_Source(request);
    const auto target = Identity_Of(aside.empty() ? request.target : aside);
    const bool own_file = request.target == origin->path || (target && *target == origin->identity);
    if (!own_file) return {};
    return Failure("was read with errors and cannot be saved over its original; save a copy instead");
}

std::string Attributes_Source(const Save_Request& request)
{
    const bool exists = access(request.target.c_str(), F_OK) == 0;
    return !exists && request.parent == request.target + "~" ? request.parent : std::string();
}
