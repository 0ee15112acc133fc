#pragma once

/// The arithmetic of a splitter between two controls. Pixels; the ratio is the share of the first control in the length
/// that is usable: the area along the axis less its margins and the splitter.
/// Horizontal: side by side, the splitter moves left and right. Vertical: above each other.
enum class Split_Orientation : int { Horizontal = 0, Vertical = 1 };

struct Split_Rectangle {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Split_Rectangle&) const = default;
};

struct Split_Layout {
    Split_Rectangle first; ///< left or top
    Split_Rectangle splitter;
    Split_Rectangle second; ///< right or bottom
};

class Split_Model {
public:
    Split_Orientation Orientation() const { return orientation_; }
    void Set_Orientation(Split_Orientation New_Orientation) { orientation_ = New_Orientation; }
    int SplitterWidth() const { return splitter_width_; } ///< default 5
    void Set_SplitterWidth(int New_Width);
    double SplitRatio() const { return ratio_; }       ///< default 0.5
    void Set_SplitRatio(double New_SplitRatio);        ///< clamped to the limits
    void Set_SplitRatioUnbound(double New_SplitRatio); ///< clamped to 0..1 only; not a number is ignored
    double MinSplitRatio() const { return minimum_; }  ///< default 0
    double MaxSplitRatio() const { return maximum_; }  ///< default 1
    void Set_MinSplitRatio(double New_Ratio);          ///< a maximum below it follows; the ratio is clamped
    void Set_MaxSplitRatio(double New_Ratio);

    struct Margins {
        int left = 0, top = 0, right = 0, bottom = 0;
    };
    const Margins& Margin() const { return margins_; }
    void Set_Margin(int New_Margin) { margins_ = {New_Margin, New_Margin, New_Margin, New_Margin}; }
    void Set_Margins(const Margins& margins) { margins_ = margins; }

    /// Whether each element follows the container along the axis; all do by default. A control or splitter that does
    /// not follow keeps its pixels while the container changes, and the ratio changes with it.
    bool ResizeToAxisLT = true;
    bool ResizeToAxisRB = true;
    bool ResizeSplitterAxis = true;

    const Split_Rectangle& Container() const { return container_; }
    void Set_Container(const Split_Rectangle& container);    ///< a new area: the ratio stays
    void Resize_Container(const Split_Rectangle& container); ///< the area changed: the rules of following apply

    int Usable_Length() const;
    int Pixels_LT() const; ///< length of the first control along the axis
    /// The ratio for a splitter that is moved by Split_Offset pixels from where the first control has Split_Pixels_LT.
    /// Moves nothing and knows no limits; with no usable length it is the present ratio.
    double ComputeSplitRatio(int Split_Offset, int Split_Pixels_LT) const;
    double Clamped(double ratio) const;
    Split_Layout Layout() const;

private:
    Split_Rectangle Inner() const;

    Split_Orientation orientation_ = Split_Orientation::Horizontal;
    Split_Rectangle container_;
    Margins margins_;
    int splitter_width_ = 5;
    double ratio_ = 0.5;
    double minimum_ = 0;
    double maximum_ = 1;
};
