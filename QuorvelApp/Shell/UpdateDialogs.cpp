#include "Shell/UpdateDialogs.h"

#include "Controls/Style.h"
#include "Controls/Wording.h"
#include "Shell/Alert.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <utility>

namespace quorvel {

namespace {

constexpr QSize newsSize(520, 400);
constexpr int iconSize = 64;

QString name() {
    return text(appName);
}

/// The program's, sharp on the screen of the widget.
QPixmap icon(const QWidget& widget) {
    return QApplication::windowIcon().pixmap(QSize(iconSize, iconSize), widget.devicePixelRatio());
}

/// Text as it is, whatever marks it carries.
QLabel* label(const QString& words, const QFont& font) {
    auto* label = new QLabel(words);
    label->setTextFormat(Qt::PlainText);
    label->setFont(font);
    label->setWordWrap(true);
    return label;
}

QPlainTextEdit* notesField(const QString& notes) {
    auto* field = new QPlainTextEdit(notes);
    field->setReadOnly(true);
    field->setTabChangesFocus(true);
    field->setAccessibleName("What’s new");
    field->document()->setDocumentMargin(Style::small);
    return field;
}

}  // namespace

UpdateDialogs::UpdateDialogs(Updater& updater, std::function<QWidget*()> window, QObject* parent)
    : QObject(parent), version_(updater.version()), window_(std::move(window)) {
    connect(&updater, &Updater::upToDate, this, [this] {
        showAlert("You’re up to date",
                  name() + " " + version_ + " is the newest version. " + name() +
                      " checks for updates on its own and will let you know when there’s a new one.");
    });
    connect(&updater, &Updater::unreachable, this, [this] {
        showAlert("Couldn’t check for updates", "Check your internet connection and try again. " + name() +
                                                    " also checks on its own about once a day.");
    });
    connect(&updater, &Updater::newerVersion, this, &UpdateDialogs::showNews);
}

UpdateDialogs::~UpdateDialogs() {
    delete shown_;
}

void UpdateDialogs::showAlert(const QString& message, const QString& information) {
    delete shown_;
    QWidget* window = window_();
    if (window) {
        window->raise();
        window->activateWindow();
    }
    auto* alert = new Alert(message, information, window);
    alert->setWindowTitle(name());
    alert->addButton("OK", QDialogButtonBox::AcceptRole, Alert::Answer::default_);
    shown_ = alert;
    alert->open();
}

void UpdateDialogs::showNews(const UpdateFeed::News& news, Updater::Occasion occasion) {
    delete shown_;
    // Nobody is interrupted by it: it blocks nothing, and what nobody asked for doesn't take the keyboard either.
    auto* dialog = new QDialog(window_());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAttribute(Qt::WA_ShowWithoutActivating, occasion == Updater::Occasion::daily);
    dialog->setWindowTitle("Update for " + name());
    dialog->resize(newsSize);

    auto* picture = new QLabel;
    picture->setPixmap(icon(*dialog));
    picture->setVisible(!picture->pixmap().isNull());
    auto* titles = new QVBoxLayout;
    titles->setSpacing(Style::tight);
    titles->addStretch();
    titles->addWidget(
        label(name() + " " + text(news.version) + " is here", Style::font(Style::TextSize::title3, QFont::DemiBold)));
    titles->addWidget(label("You have version " + version_ + ".", Style::font(Style::TextSize::body)));
    titles->addStretch();
    auto* top = new QHBoxLayout;
    top->setSpacing(Style::medium);
    top->addWidget(picture);
    top->addLayout(titles, 1);

    auto* buttons = new QDialogButtonBox;
    auto* download = buttons->addButton("Download…", QDialogButtonBox::AcceptRole);
    buttons->addButton("Later", QDialogButtonBox::RejectRole);
    download->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, dialog, [dialog, address = QUrl(text(news.download))] {
        QDesktopServices::openUrl(address);
        dialog->accept();
    });

    auto* layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(Style::large, Style::large, Style::large, Style::large);
    layout->setSpacing(Style::medium);
    layout->addLayout(top);
    if (news.notes.empty()) {
        layout->addStretch();
        dialog->resize(newsSize.width(), 0);
    } else {
        layout->addWidget(notesField(text(news.notes)), 1);
    }
    layout->addWidget(buttons);

    shown_ = dialog;
    dialog->show();
    if (occasion == Updater::Occasion::command) dialog->activateWindow();
    download->setFocus();
}

}  // namespace quorvel
