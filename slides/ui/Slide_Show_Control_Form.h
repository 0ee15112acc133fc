#pragma once

#include "catalogue/Picture_Catalogue.h"
#include "controls/ui/bkcButtonPanel.h"
#include "frame/ui/Form_Frame.h"
#include "slides/Slide_Player.h"

#include <QtWidgets/QLabel>

/// The small window of a running show: play or pause, stop, previous, next, select. It stays above the others and
/// remembers its place.
class Slide_Show_Control_Form : public QWidget, public Slide_Control_Window {
    Q_OBJECT

public:
    /// icon: by resource id
    Slide_Show_Control_Form(Picture_Catalogue& catalogue, const Platform& platform,
                            const std::function<QIcon(const QString& id)>& icon, QWidget* parent = nullptr);

    void Form_Display(int Slide_Index, int Slide_Count, bool Start_In_Play_Mode) override;
    void Set_Slide_Index(int Slide_Index) override;
    void Set_Slide_Count(int Slide_Count) override;
    void Set_Playing(bool playing) override;
    void Form_Erase() override;

    QString Label_Text() const { return label_->text(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Make_Panel(const std::function<QIcon(const QString& id)>& icon);
    void Move_To_Edge();
    void Show_State();
    void Control(Slide_Control_Code code) { catalogue_.Slide_Show_Control(int(code), slide_index_); }

    Picture_Catalogue& catalogue_;
    bkcButtonPanel* panel_;
    QLabel* label_;
    Form_Frame* frame_;
    int slide_index_ = 0;
    int slide_count_ = 0;
    bool playing_ = false;
    bool offers_pause_ = false; // the button in the place of both
    QIcon select_icon_;
    QIcon selected_icon_; // of a slide whose picture is selected
};
