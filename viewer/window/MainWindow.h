// The window with a tab for each document.
#pragma once

#include "viewer/window/DocumentView.h"

#include <QActionGroup>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    // The format must outlive the window.
    explicit MainWindow(const FormatModel& model);

    // Opens a tab. Gives null, and tells why, where the name is that of no input.
    DocumentView* open(const Input& input);
    // Null where no document is open.
    DocumentView* current() const;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildFileMenu();
    void buildEditMenu();
    void buildGoMenu();
    void buildViewMenu();
    void buildHelpMenu();
    void buildStatusBar();
    QAction* add(QMenu& menu, const QString& text, const QList<QKeySequence>& keys,
                 const std::function<void()>& work);
    // Likewise for what needs an open document.
    QAction* addForDocument(QMenu& menu, const QString& text, const QList<QKeySequence>& keys,
                            const std::function<void(DocumentView&)>& work);

    void chooseFiles(bool follows);
    void chooseAddress();
    void reopen();
    void close(int tab);
    void remember(const QString& file);
    void fillRecentMenu();
    void goTo();
    void goToTrouble(int step);
    void goToSameType(int step);
    void step(int by, const std::function<bool(const IndexEntry&)>& isWanted);
    void exportMessages();
    void showState();
    void stepTab(int by);

    const FormatModel& format;
    QTabWidget* tabs;
    QMenu* recentMenu = nullptr;
    QAction* pauseAction = nullptr;
    QAction* followAction = nullptr;
    QList<QAction*> documentActions;
    QLabel* state;
    QProgressBar* progress;
    QPushButton* cancelButton;
    QLabel* counts;
    QLabel* place;
    QTimer timer;
};
