#pragma once

#include "catalogue/Catalogue_Commands.h"
#include "catalogue/ui/Filmstrip_Widget.h"
#include "catalogue/ui/Magnify_Widget.h"
#include "catalogue/ui/Picture_List_Grid.h"
#include "controls/ui/bkcButtonPanel.h"
#include "controls/ui/bkcExplorer.h"
#include "frame/Close_Sequence.h"
#include "frame/ui/Form_Frame.h"

#include <QtWidgets/QtWidgets>

/// What the program gives its main window; all must outlive it.
struct Halvine_Window_Parts {
    Halvine_Form& form;
    Program_State& state;
    const Entry_Ports& ports;
    std::function<QIcon(const QString& id)> icon; ///< "IDI_HALVINE_PICK"; a null icon for an unknown id
    QString short_version{};                      ///< for the caption
    QString long_version{};
};

/// The main window: wiring between the catalogue, its commands and the widgets. The program creates it with
/// Make_Halvine_Window and starts it through Starting_Window.
class Halvine_Window : public QMainWindow,
                       public Starting_Window,
                       private Catalogue_View,
                       private Window_Host,
                       private Closing_Window {
    Q_OBJECT

public:
    explicit Halvine_Window(Halvine_Window_Parts parts);
    ~Halvine_Window() override;

    Catalogue_Commands& Commands() { return commands_; } ///< other areas bring handlers
    Filmstrip_Widget& Filmstrip() { return *strip_; }
    bkcExplorer& Explorer() { return *explorer_; }
    void Set_Slide_Show_Opener(std::function<void(const QString& path)> opener) { open_show_ = std::move(opener); }
    QMenu& Menu_Of(Menu menu) { return *menus_.value(menu); } ///< one of the menu bar; the program adds items below
    void Show_File_Changes() override;                        ///< the folder pane reads its files again
    bool Is_In_Full_Window_View() const { return magnify_->Is_Full_Window(); }
    void Set_Full_Window_View(bool on);     ///< whether there is a current picture or not
    void Set_Slide_Show_Look(bool running); ///< a black ground behind the picture and the button that stops the show
    bool Shows_Picture_List() const { return pages_->currentIndex() == 1; }

    // Starting_Window.
    void Load() override;
    void Open_Slide_Show(const QString& path) override;
    void Show() override { show(); }
    void Enlarge_To_Design_Size() override { frame_.Enlarge_To_Design_Size(); }
    void Start_Drawing() override;
    bool Has_Pictures() const override;
    void Start_Slide_Show() override;
    void Set_Alias_String(const QString& alias) override;
    void Set_Pattern_String(const QString& pattern) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // Building.
    QWidget* Make_File_Frame();
    QWidget* Make_Pictures();
    QWidget* Make_Status_Frame();
    void Make_Panel();
    void Make_Menus();
    QMenu* Make_Menu(Menu menu);
    void Add_Prepared_Scripts(QMenu& menu);
    void Connect_Parts();
    void Connect_Folder_Pane();
    bool Keeps_Key(const QWidget& part, const QKeyEvent& key) const;
    QIcon Icon_Of(const QString& id) const { return parts_.icon ? parts_.icon(id) : QIcon(); }

    // Showing.
    void Schedule_Actions();
    void Show_Actions();
    void Show_Status();
    void Show_Full_Window(bool on);
    void Run(Command_Id id);
    void Help();

    // Catalogue_View.
    int Thumbnails_Per_Row() const override { return strip_->Layout().Thumbnails_Per_Row(); }
    int Thumbnail_Rows() const override { return strip_->Layout().Thumbnail_Rows(); }
    void Set_Top_Row(int row) override { strip_->Set_Top_Row(row); }
    void Draw_Thumbnail(int index) override;
    void Draw_All_Thumbnails() override;
    void Set_Thumbnail_Frame(int index, bool) override { strip_->Set_Thumbnail_Frame(index); }
    void Clear_Strip() override { strip_->Draw_All_Thumbnails(); }
    void Update_Scroll_Range() override { strip_->Update_Scroll_Range(); }
    void Scroll_To_Index(int index) override { strip_->Scroll_To_Index(index); }
    void Update_Status() override;
    void Show_Current_Picture() override;
    void Begin_Pick_Progress() override;
    void Show_Pick_Progress(const QString& label, int done, int total) override;
    void Repaint_Pick_Progress() override { progress_bar_->update(); }
    void End_Pick_Progress() override;
    QString Explorer_Path() const override { return explorer_->Path(); } // Closing_Window's too
    void Refresh_Folder_Tree(const QString& folder) override { explorer_->RefreshTree(folder); }
    void Set_Tree_Pattern(const QString& pattern) override { Set_Pattern_String(pattern); }
    void Set_Tree_Alias(const QString& alias) override { Set_Alias_String(alias); }
    QString Tree_Alias() const override { return explorer_->ExplorerTree().Alias(); }

    // Window_Host.
    bool Leave_Full_Window_View() override;
    bool Leave_Picture_List() override;
    void Show_Picture_List() override;
    void Rotate_Blowup(int degrees) override { magnify_->Rotate_View(degrees); }
    int File_Row_Count() const override;
    QStringList Selected_File_Paths() const override { return explorer_->Selected_Files(); }
    QStringList All_File_Paths() const override;
    bool Shows_Found_Files() const override { return explorer_->Model().Shows_File_List(); }
    void Go_To_Folder(const QString& folder) override { explorer_->Set_Path(folder); }
    void Refresh_Folders() override;
    QStringList Selected_Folders() const override;
    QString File_Pattern() const override { return explorer_->ExplorerPattern(); }
    void List_Found_Files(const QStringList& paths) override;
    std::optional<Save_Options> Ask_Save_Options() override;
    std::optional<std::array<int, 3>> Ask_Color(std::array<int, 3> red_green_blue) override;
    void Edit_Script_Items(std::span<const int> keys) override;
    void Open_Configuration_File() override;
    void Save_Configuration_File() override;
    Bitmap_Handle Clipboard_Bitmap() override;
    void Close_Window() override { QTimer::singleShot(0, this, &QWidget::close); }

    // Closing_Window.
    bool Leave_Full_Views() override { return Leave_Full_Window_View() || Leave_Picture_List(); }
    bool Pick_In_Progress() const override { return parts_.form.Picking().Pick_In_Progress(); }
    bool Is_Busy() const override { return commands_.Is_Busy(); }
    bool Confirm_Abandon_Slide_Show() override { return parts_.form.State().slide_show->Confirm_Abandon(); }
    bool Confirm_Abandon_Scripts() override;
    bool Confirm_Abandon_Descriptions() override;
    bool Confirm_Close_Of_Other_Windows() override;
    QString Pattern_Text() const override { return pattern_text_->text(); }
    QString Alias_String() const override { return Tree_Alias(); }
    void Detach_Folder_Pane() override { explorer_->disconnect(this); }
    void Release_Pictures() override;
    bool Save_Configuration_On_Exit() const override { return commands_.Save_Configuration_On_Exit; }
    const Placed_Form& Form() const override { return frame_; }
    std::array<float, 2> Splitter_Positions() const override;
    void Set_Splitter_Positions(const std::vector<float>& positions);
    void Quit_Help() override { parts_.ports.platform.shell.Quit_Help(); }
    void Unload_Other_Windows() override;

    Halvine_Window_Parts parts_;
    Form_Frame frame_;
    Catalogue_Commands commands_{parts_.form, *this};
    bkcButtonPanel* panel_ = nullptr;
    bkcSplit* file_split_ = nullptr;
    bkcSplit* picture_split_ = nullptr;
    bkcExplorer* explorer_ = nullptr;
    QLineEdit* pattern_text_ = nullptr;
    QWidget* file_frame_ = nullptr;
    QStackedWidget* pages_ = nullptr;
    Filmstrip_Widget* strip_ = nullptr;
    Magnify_Widget* magnify_ = nullptr;
    Picture_List_Grid* list_ = nullptr;
    QWidget* status_frame_ = nullptr;
    QWidget* progress_frame_ = nullptr;
    QProgressBar* progress_bar_ = nullptr;
    QLabel* progress_label_ = nullptr;
    QElapsedTimer progress_shown_; // when the two told something last
    QLabel* file_status_ = nullptr;
    QLabel* picture_status_ = nullptr;
    QLabel* current_label_ = nullptr;
    QLabel* design_size_ = nullptr;
    QMenu* popup_ = nullptr;
    QMap<Menu, QMenu*> menus_;           // of the menu bar
    QMap<Command_Id, QAction*> actions_; // of the menu bar; the popup's are apart
    QList<std::pair<Command_Id, QAction*>> popup_actions_;
    QList<QAction*> prepared_;
    QTimer actions_later_;
    bool panel_looks_running_ = false; // the button stops a show
    Save_Options last_save_options_;   // of this run
    std::function<void(const QString& path)> open_show_;
};

std::unique_ptr<Halvine_Window> Make_Halvine_Window(Halvine_Window_Parts parts);
