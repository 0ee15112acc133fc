#pragma once

#include "frame/ui/Framed_Form.h"

#include <span>

class QListWidget;
class QTextBrowser;

/// A page of resources/help: its topic is the name of its file without the extension.
struct Help_Page {
    const char* topic;
    const char* title;
};

std::span<const Help_Page> Help_Pages(); ///< in reading order

/// The help viewer: the list of pages at the left, the page beside it. Links between pages are followed.
class Help_Form final : public Framed_Form {
    Q_OBJECT

public:
    explicit Help_Form(const Platform* platform, QWidget* parent = nullptr);

    /// Shows the window with this page. For an empty or unknown topic it shows the page that was open last, at first the
    /// first one.
    void Open_Topic(const QString& topic);

private:
    void Show_Chosen_Page(int row);
    void Mark_Page_In_List(const QUrl& page_address);

    QListWidget* contents_;
    QTextBrowser* page_;
};
