#include "frame/Form_Resize.h"

#include <cmath>

namespace {

/// Adds to what is pending and takes whole pixels out of it, from half a pixel on. Without a change nothing is looked
/// at: what is left after a step up to a whole pixel must not move the control back by itself.
int Take_Whole_Pixels(double& pending, double change)
{
    if (change == 0.0) return 0;
    pending += change;
    const double whole = std::round(pending);
    pending -= whole;
    return int(whole);
}

} // namespace

Form_Resize::Form_Resize(QSize design, QSize present, int twips_per_pixel)
    : design_(design), present_(present), twips_per_pixel_(std::max(1, twips_per_pixel))
{}

void Form_Resize::Set_Design_Size(QSize design, QSize present)
{
    design_ = design;
    present_ = present;
}

void Form_Resize::Resize_To(QSize size)
{
    const double down = double(size.height() - present_.height()) / twips_per_pixel_;
    const double across = double(size.width() - present_.width()) / twips_per_pixel_;
    for (Form_Resize_Group& group : groups_)
        for (Anchor_Entry& entry : group.entries) Move_Entry(entry, group.factors, down, across);
    present_ = size;
}

void Form_Resize::Move_Entry(Anchor_Entry& entry, const Anchor_Factors& group, double down, double across) const
{
    const Anchor_Factors& own = entry.factors;
    const int top = Take_Whole_Pixels(entry.pending[0], down * double(group.top * own.top));
    const int left = Take_Whole_Pixels(entry.pending[1], across * double(group.left * own.left));
    const int height = Take_Whole_Pixels(entry.pending[2], down * double(group.height * own.height));
    const int width = Take_Whole_Pixels(entry.pending[3], across * double(group.width * own.width));
    if (entry.control != nullptr && (top != 0 || left != 0 || height != 0 || width != 0))
        entry.control->Change_Box(top, left, height, width);
}

QSize Form_Design_Size(bool Design_From_Form, QSize form, QSize global)
{
    if (Design_From_Form) return form;
    return {global.width() != 0 ? global.width() : form.width(),
            global.height() != 0 ? global.height() : form.height()};
}
