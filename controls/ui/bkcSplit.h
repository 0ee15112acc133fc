#pragma once

#include "controls/Split_Model.h"
#include <QtWidgets/QSplitter>

/// Two controls with a movable splitter between them. Stands on QSplitter for drawing, keyboard and accessibility; where
/// the splitter stands is Split_Model's business.
class bkcSplit : public QSplitter {
    Q_OBJECT

public:
    explicit bkcSplit(QWidget* parent = nullptr);

    /// Binds the three controls. The splitter fills Container and follows its size; with no container it is laid out by
    /// its parent. The children become children of the splitter.
    void Initialize(QWidget* Container, QWidget* Control_LT, QWidget* Control_RB, bool Execute_Split = true);
    void InitializeContainerBound(int Container_Left, int Container_Top, int Container_Width, int Container_Height,
                                  bool Execute_Split = true);
    void InitializeContentControls(QWidget* Control_LT, QWidget* Control_RB, bool Execute_Split = true);
    void Refresh(); ///< lays out again

    QWidget* Control_LT() const { return control_lt_; }
    QWidget* Control_RB() const { return control_rb_; }

    double ComputeSplitRatio(int Split_Offset, int Split_Pixels_LT) const;
    double SplitRatio() const { return model_.SplitRatio(); }
    void Set_SplitRatio(double New_SplitRatio);
    void Set_SplitRatioUnbound(double New_SplitRatio);
    double MinSplitRatio() const { return model_.MinSplitRatio(); }
    void Set_MinSplitRatio(double New_Ratio);
    double MaxSplitRatio() const { return model_.MaxSplitRatio(); }
    void Set_MaxSplitRatio(double New_Ratio);
    Split_Orientation Orientation() const { return model_.Orientation(); }
    void Set_Orientation(Split_Orientation New_Orientation);
    int SplitterWidth() const { return model_.SplitterWidth(); }
    void Set_SplitterWidth(int New_Width);
    void Set_Margin(int New_Margin);
    // Each of the four by itself.
    int MarginLeft() const { return model_.Margin().left; }
    int MarginTop() const { return model_.Margin().top; }
    int MarginRight() const { return model_.Margin().right; }
    int MarginBottom() const { return model_.Margin().bottom; }
    void Set_MarginLeft(int New_Margin) { Set_Margins(New_Margin, MarginTop(), MarginRight(), MarginBottom()); }
    void Set_MarginTop(int New_Margin) { Set_Margins(MarginLeft(), New_Margin, MarginRight(), MarginBottom()); }
    void Set_MarginRight(int New_Margin) { Set_Margins(MarginLeft(), MarginTop(), New_Margin, MarginBottom()); }
    void Set_MarginBottom(int New_Margin) { Set_Margins(MarginLeft(), MarginTop(), MarginRight(), New_Margin); }
    bool ResizeToAxisLT() const { return model_.ResizeToAxisLT; }
    void Set_ResizeToAxisLT(bool New_Resize) { model_.ResizeToAxisLT = New_Resize; }
    bool ResizeToAxisRB() const { return model_.ResizeToAxisRB; }
    void Set_ResizeToAxisRB(bool New_Resize) { model_.ResizeToAxisRB = New_Resize; }
    bool ResizeSplitterAxis() const { return model_.ResizeSplitterAxis; }
    void Set_ResizeSplitterAxis(bool New_Resize) { model_.ResizeSplitterAxis = New_Resize; }

    // As for any control.
    int BorderStyle() const { return border_style_; } ///< 0 none, the default; 1 a frame
    void Set_BorderStyle(int New_Style);
    int Appearance() const { return appearance_; } ///< of the frame: 0 flat, 1 sunken, the default
    void Set_Appearance(int New_Appearance);
    QColor BackColor() const { return palette().color(QPalette::Window); }
    void Set_BackColor(const QColor& New_Color); ///< of the splitter and the margins; an invalid one is the palette's
    int BackStyle() const
    {
        return autoFillBackground() ? 1 : 0;
    } ///< 0 the ground below shows, the default; 1 BackColor
    void Set_BackStyle(int New_Style) { setAutoFillBackground(New_Style == 1); }
    QString Caption() const { return accessibleName(); }
    void Set_Caption(const QString& New_Caption); ///< the accessible name of the splitter
    bool Enabled() const { return count() != 2 || handle(1)->isEnabled(); }
    void Set_Enabled(bool New_Enabled); ///< of the splitter alone: it no longer moves

    int Pixels_LT() const { return model_.Pixels_LT(); }
    /// A drag or an arrow key: the splitter moves by Split_Offset from where the first control had Split_Pixels_LT.
    void Drag(int Split_Offset, int Split_Pixels_LT);

signals:
    void SplitRatioChanged(double New_SplitRatio); ///< by the user

protected:
    QSplitterHandle* createHandle() override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;

private:
    void Set_Margins(int New_Left, int New_Top, int New_Right, int New_Bottom);
    void Show_Frame();
    void Take_Area();
    void Lay_Out();

    Split_Model model_;
    QWidget* container_ = nullptr;
    QWidget* control_lt_ = nullptr;
    QWidget* control_rb_ = nullptr;
    int border_style_ = 0;
    int appearance_ = 1;
};
