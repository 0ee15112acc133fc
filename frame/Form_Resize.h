#pragma once

#include <QtCore/QSize>
#include <array>
#include <vector>

/// How the controls of a window follow its size. Each control takes a share of the change of the window's height (into
/// its top and height) and width (into its left and width). Shares are factors from 0 to 1; those of the group multiply
/// those of its entries.

/// A control that is laid out by anchors; whole pixels.
class Anchored_Control {
public:
    virtual ~Anchored_Control() = default;
    virtual void Change_Box(int top, int left, int height, int width) = 0; ///< adds to each
};

struct Anchor_Factors {
    float top = 0, left = 0, height = 0, width = 0;
};

struct Anchor_Entry {
    Anchored_Control* control = nullptr; ///< not owned
    Anchor_Factors factors;
    std::array<double, 4> pending{}; ///< pixels that were not moved yet: top, left, height, width
};

struct Form_Resize_Group {
    Anchor_Factors factors{1, 1, 1, 1};
    std::vector<Anchor_Entry> entries;
};

class Form_Resize {
public:
    /// design    the smallest size that the window takes, twips
    /// present   the size for which the controls are laid out now, twips
    Form_Resize(QSize design, QSize present, int twips_per_pixel);

    void Add_Group(Form_Resize_Group group) { groups_.push_back(std::move(group)); }

    /// The size that the window may take in place of the wanted one.
    QSize Bounded_Size(QSize wanted) const { return wanted.expandedTo(design_); }

    /// Moves the controls for a new size. Movement below half a pixel is kept until its sum reaches it, so that many
    /// small steps end where one large step does.
    void Resize_To(QSize size);

    /// Design_Form_Width and Design_Form_Height: a new smallest size, and the base of the next resize.
    void Set_Design_Size(QSize design, QSize present);
    QSize Design_Size() const { return design_; }
    void Release() { groups_.clear(); }

private:
    void Move_Entry(Anchor_Entry& entry, const Anchor_Factors& group, double down, double across) const;
    QSize design_, present_;
    int twips_per_pixel_;
    std::vector<Form_Resize_Group> groups_;
};

/// The size that a form is designed for: its own where it says so, else the global one, with the form's own for a 0.
QSize Form_Design_Size(bool Design_From_Form, QSize form, QSize global);
