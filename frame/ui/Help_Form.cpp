#include "frame/ui/Help_Form.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSignalBlocker>
#include <QtCore/QUrl>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>
#include <iterator>

// Resources of a static library are there once they are asked for, by a call outside of any namespace.
static void Load_Help()
{
    Q_INIT_RESOURCE(help);
}

namespace {

constexpr Help_Page Pages[] = {
    {"first-steps", QT_TRANSLATE_NOOP("Help_Form", "First steps")},
    {"filmstrip", QT_TRANSLATE_NOOP("Help_Form", "The filmstrip")},
    {"scripts", QT_TRANSLATE_NOOP("Help_Form", "Image scripts")},
    {"renaming", QT_TRANSLATE_NOOP("Help_Form", "Renaming and describing")},
    {"slide-shows", QT_TRANSLATE_NOOP("Help_Form", "Slide shows")},
    {"safety", QT_TRANSLATE_NOOP("Help_Form", "Saving and safety")},
    {"keys", QT_TRANSLATE_NOOP("Help_Form", "Keys")},
    {"formulas", QT_TRANSLATE_NOOP("Help_Form", "Formulas")},
};

QString Address_Of(const Help_Page& page)
{
    return QStringLiteral("qrc:/help/") + QLatin1String(page.topic) + QStringLiteral(".md");
}

} // namespace

std::span<const Help_Page> Help_Pages()
{
    return Pages;
}

Help_Form::Help_Form(const Platform* platform, QWidget* parent)
    : Framed_Form(platform, QStringLiteral("Halvine-Help"), parent, Kind::Working_Window),
      contents_(new QListWidget),
      page_(new QTextBrowser)
{
    Load_Help();
    setObjectName(QStringLiteral("Help_Form"));
    setWindowTitle(tr("Halvine - Help"));
    contents_->setObjectName(QStringLiteral("Help_Contents"));
    contents_->setAccessibleName(tr("Pages"));
    for (const Help_Page& page : Pages) contents_->addItem(tr(page.title));
    page_->setObjectName(QStringLiteral("Help_Page"));
    page_->setAccessibleName(tr("Help page"));
    page_->setOpenExternalLinks(true);
    page_->document()->setDocumentMargin(16);
    auto* split = new QSplitter;
    split->addWidget(contents_);
    split->addWidget(page_);
    split->setStretchFactor(1, 1);
    split->setSizes({190, 610});
    split->setChildrenCollapsible(false);
    split->handle(1)->setAccessibleName(tr("Splitter between pages and page"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(split);
    connect(contents_, &QListWidget::currentRowChanged, this, &Help_Form::Show_Chosen_Page);
    connect(page_, &QTextBrowser::sourceChanged, this, &Help_Form::Mark_Page_In_List);
    resize(800, 600);
}

void Help_Form::Open_Topic(const QString& topic)
{
    const auto found = std::find_if(std::begin(Pages), std::end(Pages),
                                    [&](const auto& page) { return topic == QLatin1String(page.topic); });
    if (found != std::end(Pages))
        contents_->setCurrentRow(int(found - std::begin(Pages)));
    else if (contents_->currentRow() < 0)
        contents_->setCurrentRow(0);
    show();
    raise();
    activateWindow();
    page_->setFocus(); // its keys scroll
}

void Help_Form::Show_Chosen_Page(int row)
{
    if (row >= 0) page_->setSource(QUrl(Address_Of(Pages[row])), QTextDocument::MarkdownResource);
}

/// A link or the way back led to the page, whose address the browser tells before it takes it for its own.
void Help_Form::Mark_Page_In_List(const QUrl& page_address)
{
    const QString address = page_address.adjusted(QUrl::RemoveFragment).toString();
    const auto found =
        std::find_if(std::begin(Pages), std::end(Pages), [&](const auto& page) { return address == Address_Of(page); });
    const QSignalBlocker blocker(contents_); // the page is shown already
    if (found != std::end(Pages)) contents_->setCurrentRow(int(found - std::begin(Pages)));
}
