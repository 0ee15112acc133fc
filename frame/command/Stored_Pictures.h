#pragma once

#include "catalogue/Halvine_Form.h"
#include "frame/command/Terminal_Platform.h"
#include "frame/files/Result.h"

#include <functional>
#include <optional>

/// What several commands do with one picture file. Paths may be relative.

QString Absolute_Path(const QString& file);

/// Before a file is written: what a crash left in its folder is put in order, once for each folder. Files that got their
/// name back are told of.
void Recover_Folder_Of(const QString& file);

/// The items of the script that the file holds; a script that cannot be split is a failure.
Result<Script_Item_Array> Stored_Items(const QString& file);

/// The catalogue with one picture in it, picked and selected.
class Single_Picture {
public:
    Single_Picture(const QString& file, bool overwrite);

    Halvine_Form& Form() { return form_; }
    int Key() const { return key_; }
    Picture_Item& Item() { return *form_.State().pictures.Find(key_); }
    bool Is_Picked() const { return key_ != 0; }

    /// Why something was refused; without a message the library's last reason.
    tl::unexpected<Error> Refusal() const;

private:
    Terminal_Platform platform_;
    struct No_Window final : Catalogue_View {
        bool Shows_Thumbnails() const override { return false; }
    };
    No_Window window_;
    Halvine_Form form_{platform_.platform, &window_};
    int key_ = 0;
};

/// Picks the file and changes it; `change` answers whether it did.
Result<void> Change_Picture(const QString& file, bool overwrite, const std::function<bool(Single_Picture&)>& change);

struct Stored_Texts {
    std::optional<QString> script{};
    std::optional<QString> description{};
};

/// Stores texts in the file: same pixels, times kept.
Result<void> Store_Texts(const QString& file, const Stored_Texts& texts, bool overwrite);
