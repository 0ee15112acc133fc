#pragma once

#include "frame/Form_Placement.h"
#include "frame/Program_State.h"

#include <QtWidgets/QWidget>

/// What every window of the program has in common: a design size below which it cannot be made smaller, a remembered
/// place, the switch that keeps it on top, and its turn when all windows close. Lengths are twips. Dialogs and working
/// windows get theirs by deriving from Framed_Form; a window of another kind holds one as a member. Where controls stand
/// is the business of the window's layout.
class Form_Frame final : public QObject, public Placed_Form {
    Q_OBJECT

public:
    /// platform            keeps the place and knows the screen; null: the place is not remembered
    /// Value_Name          of the settings value that keeps the place, such as "Halvine-Adjust"; may be empty
    /// Design_From_Form    the size at which the window was laid out is its design size, else the global one is
    /// At the first show the window takes its design size and its stored place; when it closes the place is stored, unless
    /// Set_Saves_Itself says otherwise.
    Form_Frame(QWidget& form, const Platform* platform, QString Value_Name, bool Design_From_Form = true);
    ~Form_Frame() override;

    // The design-size contract.
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
    /// First thing in the load of a window that goes by the global size; the others do it by themselves.
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

    /// The windows with a frame that are open, in the order in which they were opened.
    static QWidgetList Open_Forms();

signals:
    void Restored(const std::vector<float>& Splitter_Positions);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Set_Design_Size(QSize design);
    void Shown();
    void Hidden();
    QWidget& form_;
    const Platform* platform_;
    QString value_name_;
    bool design_from_form_;
    bool designed_ = false;
    bool saves_itself_ = true;
    bool restored_ = false;
    QSize design_;
    int design_twips_per_pixel_ = 12;
    std::vector<float> splitters_;
};
