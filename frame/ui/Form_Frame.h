#pragma once

#include "frame/Form_Placement.h"
#include "frame/Program_State.h"

#include <QtWidgets/QWidget>

/// What every window of the program has in common: a design size below which it cannot be made smaller, a remembered
/// place, and the switch that keeps it on top. A window owns one as a member or child; lengths are twips.
class Form_Frame final : public QObject, public Placed_Form {
    Q_OBJECT

public:
    /// Value_Name          of the settings value that keeps the place; empty for a window that does not remember it
    /// Design_From_Form    the size at which the window was laid out is its design size, else the global one is
    /// The place is restored when the window is first shown and, unless Set_Saves_Itself says otherwise, stored when it
    /// closes.
    Form_Frame(QWidget& form, const Platform& platform, QString Value_Name, bool Design_From_Form = true);
    ~Form_Frame() override;

    bool Design_From_Form() const { return design_from_form_; }
    void Set_Design_Form_Width(int New_Design_Form_Width);
    void Set_Design_Form_Height(int New_Design_Form_Height);
    void Set_Design_Twips_Per_Pixel(int New_Design_Twips_Per_Pixel)
    {
        design_twips_per_pixel_ = New_Design_Twips_Per_Pixel;
    }
    int Design_Form_Width() const { return design_.width(); }
    int Design_Form_Height() const { return design_.height(); }
    int Design_Twips_Per_Pixel() const { return design_twips_per_pixel_; }

    /// First thing in a window's load.
    void Set_Form_Design_Size(const Program_State& state);

    /// To the design size at the present left and top, unless minimized or maximized.
    void Return_To_Design_Size();
    /// Only when the window is smaller than designed.
    void Enlarge_To_Design_Size();

    /// Without moving or resizing the window; true when the platform took it.
    bool Set_Always_On_Top(bool on);

    void Set_Saves_Itself(bool on) { saves_itself_ = on; }
    void Set_Splitter_Positions(std::vector<float> positions) { splitters_ = std::move(positions); }
    void Restore(); ///< at once instead of at the first show
    void Save();

    Form_Place Place() const override;
    void Move_To(const Form_Place& place) override;

signals:
    void Restored(const std::vector<float>& Splitter_Positions);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Set_Design_Size(QSize design);
    QWidget& form_;
    const Platform& platform_;
    QString value_name_;
    bool design_from_form_;
    bool saves_itself_ = true;
    bool restored_ = false;
    QSize design_;
    int design_twips_per_pixel_ = 12;
    std::vector<float> splitters_;
};
