#include "viewer/window/MainWindow.h"

#include "viewer/window/AddressDialog.h"
#include "viewer/window/ExportDialog.h"
#include "viewer/window/Target.h"

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
#include <QScreen>
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
    resize(QSize(1280, 900).boundedTo(screen()->availableSize()));
    restoreGeometry(QSettings().value(QLatin1String(geometryKey)).toByteArray());
    showState();
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
