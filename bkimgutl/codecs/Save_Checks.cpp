#include "bkimgutl/codecs/Save_Checks.h"

#include "frame/files/Limits.h"

#include <unistd.h>

namespace {

Result<void> Check_Text(const std::string& text, int limit, const char* name)
{
    if (text.size() <= std::size_t(limit)) return {};
    return Failure(std::string("the ") + name + " has " + std::to_string(text.size()) + " bytes, " +
                   std::to_string(limit) + " are the limit");
}

} // namespace

Result<void> Check_Texts(const Save_Request& request)
{
    if (auto good = Check_Text(request.comment, Current_Limits().comment_bytes, "description"); !good) return good;
    return Check_Text(request.script, Current_Limits().script_bytes, "script");
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
