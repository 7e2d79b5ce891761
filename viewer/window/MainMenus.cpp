#include "viewer/window/MainWindow.h"

#include "viewer/window/Clipboard.h"
#include "viewer/window/KeysDialog.h"
#include "viewer/window/Theme.h"

#include <QApplication>
#include <QMenuBar>
#include <QMessageBox>

QAction* MainWindow::add(QMenu& menu, const QString& text, const QList<QKeySequence>& keys,
                         const std::function<void()>& work)
{
    QAction* const action = menu.addAction(text);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, work);
    return action;
}

QAction* MainWindow::addForDocument(QMenu& menu, const QString& text,
                                    const QList<QKeySequence>& keys,
                                    const std::function<void(DocumentView&)>& work)
{
    QAction* const action = add(menu, text, keys, [this, work] {
        if (DocumentView* const view = current()) {
            work(*view);
        }
    });
    documentActions.append(action);
    return action;
}

void MainWindow::buildFileMenu()
{
    QMenu& menu = *menuBar()->addMenu(QStringLiteral("&File"));
    add(menu, QStringLiteral("&Open..."), {QKeySequence::Open}, [this] { chooseFiles(false); });
    add(menu, QStringLiteral("Open and &Follow..."), {Qt::CTRL | Qt::SHIFT | Qt::Key_O},
        [this] { chooseFiles(true); });
    add(menu, QStringLiteral("Open &Address..."), {Qt::CTRL | Qt::Key_L},
        [this] { chooseAddress(); });
    recentMenu = menu.addMenu(QStringLiteral("&Recent Files"));
    connect(recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
    fillRecentMenu();
    addForDocument(menu, QStringLiteral("Read A&gain"), {QKeySequence::Refresh},
                   [this](DocumentView&) { reopen(); });
    menu.addSeparator();
    addForDocument(menu, QStringLiteral("&Export..."), {Qt::CTRL | Qt::Key_E},
                   [this](DocumentView&) { exportMessages(); });
    menu.addSeparator();
    addForDocument(menu, QStringLiteral("&Close"), {QKeySequence(Qt::CTRL | Qt::Key_W)},
                   [this](DocumentView&) { close(tabs->currentIndex()); });
    add(menu, QStringLiteral("&Quit"), {QKeySequence(Qt::CTRL | Qt::Key_Q)},
        [this] { QMainWindow::close(); });
}

void MainWindow::buildEditMenu()
{
    QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Edit"));
    addForDocument(menu, QStringLiteral("&Copy as Text"), {QKeySequence::Copy},
                   [](DocumentView& view) { copyRows(view, CopyForm::text); });
    addForDocument(menu, QStringLiteral("Copy as &JSON"), {Qt::CTRL | Qt::SHIFT | Qt::Key_C},
                   [](DocumentView& view) { copyRows(view, CopyForm::json); });
    addForDocument(menu, QStringLiteral("Copy as &Hexadecimal"), {Qt::CTRL | Qt::ALT | Qt::Key_C},
                   [](DocumentView& view) { copyRows(view, CopyForm::hex); });
    addForDocument(menu, QStringLiteral("Select &All"), {},
                   [](DocumentView& view) { view.list().selectAll(); });
    menu.addSeparator();
    addForDocument(menu, QStringLiteral("&Filter"), {Qt::CTRL | Qt::Key_K, Qt::Key_Slash},
                   [](DocumentView& view) { view.filter().takeFocus(); });
    addForDocument(menu, QStringLiteral("&Search..."), {QKeySequence::Find},
                   [](DocumentView& view) { view.openSearch(); });
    addForDocument(menu, QStringLiteral("Search &Next"), {QKeySequence(Qt::Key_F3)},
                   [](DocumentView& view) { view.searchNext(); });
    addForDocument(menu, QStringLiteral("Search &Back"), {Qt::SHIFT | Qt::Key_F3},
                   [](DocumentView& view) { view.searchBack(); });
}

void MainWindow::buildGoMenu()
{
    QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Go"));
    addForDocument(menu, QStringLiteral("To Number, Byte or Time..."), {Qt::CTRL | Qt::Key_G},
                   [this](DocumentView&) { goTo(); });
    addForDocument(menu, QStringLiteral("First"), {Qt::CTRL | Qt::Key_Home},
                   [](DocumentView& view) { view.goTo(0); });
    addForDocument(menu, QStringLiteral("Last"), {Qt::CTRL | Qt::Key_End},
                   [](DocumentView& view) { view.goTo(view.document().index().size()); });
    menu.addSeparator();
    addForDocument(menu, QStringLiteral("Next of This Type"), {Qt::ALT | Qt::Key_Down},
                   [this](DocumentView&) { goToSameType(1); });
    addForDocument(menu, QStringLiteral("Previous of This Type"), {Qt::ALT | Qt::Key_Up},
                   [this](DocumentView&) { goToSameType(-1); });
    addForDocument(menu, QStringLiteral("Next Damage"), {QKeySequence(Qt::Key_F8)},
                   [this](DocumentView&) { goToTrouble(1); });
    addForDocument(menu, QStringLiteral("Previous Damage"), {Qt::SHIFT | Qt::Key_F8},
                   [this](DocumentView&) { goToTrouble(-1); });
    menu.addSeparator();
    add(menu, QStringLiteral("Next Tab"), {Qt::CTRL | Qt::Key_PageDown, Qt::CTRL | Qt::Key_Tab},
        [this] { stepTab(1); });
    add(menu, QStringLiteral("Previous Tab"),
        {Qt::CTRL | Qt::Key_PageUp, Qt::CTRL | Qt::SHIFT | Qt::Key_Tab}, [this] { stepTab(-1); });
}

void MainWindow::buildViewMenu()
{
    QMenu& menu = *menuBar()->addMenu(QStringLiteral("&View"));
    using Overview = DocumentView::Overview;
    addForDocument(menu, QStringLiteral("&List"), {Qt::CTRL | Qt::Key_1},
                   [](DocumentView& view) { view.showOverview(Overview::list); });
    addForDocument(menu, QStringLiteral("&Messages over Time"), {Qt::CTRL | Qt::Key_2},
                   [](DocumentView& view) { view.showOverview(Overview::lanes); });
    addForDocument(menu, QStringLiteral("&Fields over Time"), {Qt::CTRL | Qt::Key_3},
                   [](DocumentView& view) { view.showOverview(Overview::plot); });
    menu.addSeparator();
    pauseAction = addForDocument(menu, QStringLiteral("&Pause"), {Qt::CTRL | Qt::Key_P},
                                 [](DocumentView& view) { view.setPaused(!view.isPaused()); });
    pauseAction->setCheckable(true);
    followAction =
        addForDocument(menu, QStringLiteral("Keep the &Newest in Sight"), {Qt::CTRL | Qt::Key_T},
                       [](DocumentView& view) { view.setFollowing(!view.isFollowing()); });
    followAction->setCheckable(true);
    addForDocument(menu, QStringLiteral("&Stop Reading or Searching"), {Qt::CTRL | Qt::Key_Period},
                   [](DocumentView& view) { view.cancel(); });
    menu.addSeparator();
    auto* const themes = new QActionGroup(this);
    for (const Theme theme : {Theme::system, Theme::light, Theme::dark}) {
        QAction* const action = add(menu, themeName(theme), {}, [theme] { chooseTheme(theme); });
        action->setCheckable(true);
        action->setChecked(theme == chosenTheme());
        themes->addAction(action);
    }
}

void MainWindow::buildHelpMenu()
{
    QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Help"));
    add(menu, QStringLiteral("&Keys"), {QKeySequence::HelpContents},
        [this] { KeysDialog(*menuBar(), this).exec(); });
    add(menu, QStringLiteral("&About"), {}, [this] {
        QMessageBox::about(
            this, QStringLiteral("rtcm2-view"),
            QStringLiteral("rtcm2-view %1\n\nShows what is in messages of %2.")
                .arg(QApplication::applicationVersion(), QString::fromStdString(format.name())));
    });
}
