#include "viewer/window/MainWindow.h"

#include "viewer/window/AddressDialog.h"
#include "viewer/window/Clipboard.h"
#include "viewer/window/ExportDialog.h"
#include "viewer/window/KeysDialog.h"
#include "viewer/window/Target.h"
#include "viewer/window/Theme.h"

#include "sources/InputUrl.h"
#include "sources/Sources.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>

namespace {

constexpr int stateEvery = 500;    // milliseconds; of live inputs, which may be silent
constexpr int mostRecent = 10;
constexpr auto recentKey = "recentFiles";
constexpr auto geometryKey = "geometry";

QStringList recentFiles()
{
    return QSettings().value(QLatin1String(recentKey)).toStringList();
}

}    // namespace

MainWindow::MainWindow(const FormatModel& model) : format(model), tabs(new QTabWidget)
{
    setWindowTitle(QStringLiteral("rtcm2-view"));
    setAcceptDrops(true);
    tabs->setTabsClosable(true);
    tabs->setMovable(true);
    tabs->setDocumentMode(true);
    connect(tabs, &QTabWidget::tabCloseRequested, this, &MainWindow::close);
    connect(tabs, &QTabWidget::currentChanged, this, &MainWindow::showState);
    setCentralWidget(tabs);
    buildStatusBar();
    buildFileMenu();
    buildEditMenu();
    buildGoMenu();
    buildViewMenu();
    buildHelpMenu();
    connect(&timer, &QTimer::timeout, this, &MainWindow::showState);
    timer.start(stateEvery);
    resize(1100, 720);
    restoreGeometry(QSettings().value(QLatin1String(geometryKey)).toByteArray());
    showState();
}

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
    addForDocument(menu, QStringLiteral("&Close"), {QKeySequence::Close},
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

void MainWindow::buildStatusBar()
{
    state = new QLabel;
    progress = new QProgressBar;
    progress->setMaximumWidth(160);
    progress->setTextVisible(false);
    cancelButton = new QPushButton(QStringLiteral("Stop"));
    cancelButton->setFlat(true);
    connect(cancelButton, &QPushButton::clicked, this, [this] {
        if (DocumentView* const view = current()) {
            view->cancel();
        }
    });
    counts = new QLabel;
    place = new QLabel;
    statusBar()->addWidget(state, 1);
    statusBar()->addWidget(progress);
    statusBar()->addWidget(cancelButton);
    statusBar()->addPermanentWidget(place);
    statusBar()->addPermanentWidget(counts);
}

DocumentView* MainWindow::current() const
{
    return qobject_cast<DocumentView*>(tabs->currentWidget());
}

DocumentView* MainWindow::open(const Input& input)
{
    try {
        checkInput(input.name);
    } catch (const UrlError& error) {
        QMessageBox::warning(this, QStringLiteral("rtcm2-view"),
                             QString::fromStdString(error.text));
        return nullptr;
    }
    auto* const view = new DocumentView(format, input);
    connect(view, &DocumentView::stateChanged, this, [this, view] {
        if (view == current()) {
            showState();
        }
    });
    const QString name = view->document().name();
    const int tab = tabs->addTab(view, QFileInfo(name).fileName());
    tabs->setTabToolTip(tab, name);
    tabs->setCurrentIndex(tab);
    view->list().setFocus();
    if (QFileInfo(name).isFile()) {
        remember(QFileInfo(name).absoluteFilePath());
    }
    return view;
}

void MainWindow::chooseFiles(bool follows)
{
    const QStringList files = QFileDialog::getOpenFileNames(
        this, QStringLiteral("Open"), {},
        QStringLiteral("Captures (*.rtcm2 *.rtcm *.nmea *.hex *.packed *.words);;All files (*)"));
    for (const QString& file : files) {
        open({.name = file.toStdString(), .follows = follows});
    }
}

void MainWindow::chooseAddress()
{
    AddressDialog dialog(this);
    if (dialog.exec() == QDialog::Accepted) {
        open(dialog.input());
    }
}

void MainWindow::reopen()
{
    const int tab = tabs->currentIndex();
    const Input input = current()->document().origin();
    const QString filter = current()->filter().text();
    if (DocumentView* const view = open(input)) {
        view->filter().setText(filter);
        close(tab);
        tabs->tabBar()->moveTab(tabs->count() - 1, tab);
    }
}

void MainWindow::close(int tab)
{
    QWidget* const view = tabs->widget(tab);
    tabs->removeTab(tab);
    delete view;
    showState();
}

void MainWindow::remember(const QString& file)
{
    QStringList files = recentFiles();
    files.removeAll(file);
    files.prepend(file);
    QSettings().setValue(QLatin1String(recentKey), QStringList(files.mid(0, mostRecent)));
}

void MainWindow::fillRecentMenu()
{
    recentMenu->clear();
    for (const QString& file : recentFiles()) {
        QString shown = file;
        recentMenu->addAction(shown.replace(QLatin1Char('&'), QStringLiteral("&&")),
                              [this, file] { open({.name = file.toStdString()}); });
    }
    recentMenu->setEnabled(!recentMenu->isEmpty());
}

void MainWindow::goTo()
{
    bool isGiven = false;
    const QString text = QInputDialog::getText(
        this, QStringLiteral("Go to"),
        QStringLiteral("A number (17), a byte (@1000), or the time that messages carry\n"
                       "(30:15 for the next one from here, 2:30:15 with hours from the first):"),
        QLineEdit::Normal, {}, &isGiven);
    if (!isGiven) {
        return;
    }
    DocumentView& view = *current();
    const int row = view.list().currentIndex().row();
    const std::size_t here = row >= 0 ? view.messages().placeOf(row) : 0;
    const auto target = targetOf(text.toStdString(), view.document().index(), here);
    if (target.problem.empty()) {
        view.goTo(target.place);
    } else {
        QMessageBox::information(this, QStringLiteral("Go to"),
                                 QString::fromStdString(target.problem));
    }
}

void MainWindow::step(int by, const std::function<bool(const IndexEntry&)>& isWanted)
{
    DocumentView& view = *current();
    const MessageModel& messages = view.messages();
    int row = view.list().currentIndex().row() + by;
    while (row >= 0 && row < messages.rowCount() &&
           !isWanted(view.document().index()[messages.placeOf(row)])) {
        row += by;
    }
    if (row >= 0 && row < messages.rowCount()) {
        view.goTo(messages.placeOf(row));
    } else {
        statusBar()->showMessage(QStringLiteral("no more of them"), 2000);
    }
}

void MainWindow::goToTrouble(int by)
{
    step(by, [](const IndexEntry& entry) { return !entry.hasRecord() || entry.isShort != 0; });
}

void MainWindow::goToSameType(int by)
{
    const int row = current()->list().currentIndex().row();
    if (row >= 0) {
        const IndexEntry& here = current()->document().index()[current()->messages().placeOf(row)];
        step(by, [&](const IndexEntry& entry) { return entry.type == here.type; });
    }
}

void MainWindow::stepTab(int by)
{
    if (tabs->count() > 0) {
        tabs->setCurrentIndex((tabs->currentIndex() + by + tabs->count()) % tabs->count());
    }
}

void MainWindow::exportMessages()
{
    ExportDialog(*current(), this).exec();
}

void MainWindow::showState()
{
    DocumentView* const view = current();
    for (QAction* const action : std::as_const(documentActions)) {
        action->setEnabled(view != nullptr);
    }
    progress->setVisible(view != nullptr && view->progress() >= 0);
    cancelButton->setVisible(view != nullptr && view->isWorking());
    if (view == nullptr) {
        state->setText(QStringLiteral("Open a file with Ctrl+O, or drop one here"));
        counts->clear();
        place->clear();
        return;
    }
    state->setText(view->state());
    progress->setValue(view->progress());
    counts->setText(view->counts());
    place->setText(view->place());
    pauseAction->setEnabled(view->document().comesSlowly());
    pauseAction->setChecked(view->isPaused());
    followAction->setEnabled(view->document().comesSlowly());
    followAction->setChecked(view->isFollowing());
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event)
{
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            open({.name = url.toLocalFile().toStdString()});
        }
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    QSettings().setValue(QLatin1String(geometryKey), saveGeometry());
    event->accept();
}

// Compiled here instead of on its own.
#include "moc_MainWindow.cpp"
