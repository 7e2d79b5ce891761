// A document in its tab: the filter, the list, what the chosen message has, and what happened.
#pragma once

#include "viewer/document/Document.h"
#include "viewer/document/Readings.h"
#include "viewer/document/Rereader.h"
#include "viewer/list/FilterLine.h"
#include "viewer/list/MessageList.h"
#include "viewer/list/MessageModel.h"
#include "viewer/panes/MessagePane.h"
#include "viewer/plots/LanesPane.h"
#include "viewer/plots/PlotPane.h"
#include "viewer/plots/Timeline.h"
#include "viewer/window/ReadingState.h"

#include <QLineEdit>
#include <QListWidget>
#include <QSplitter>
#include <QTabWidget>
#include <QWidget>

#include <memory>
#include <vector>

class DocumentView : public QWidget {
    Q_OBJECT

public:
    DocumentView(const FormatModel& model, Input input);
    ~DocumentView() override;

    const Document& document() const { return shown; }
    const FormatModel& format() const { return shown.format(); }
    const FilterLine& filter() const { return *filterLine; }
    FilterLine& filter() { return *filterLine; }
    // The expression that chooses what is shown; empty where there is none.
    const QString& filterInUse() const { return filterText; }
    MessageList& list() { return *table; }
    MessageModel& messages() { return *model; }

    void addPane(MessagePane* pane);

    // What shows all messages, one at a time.
    enum class Overview { list, lanes, plot };
    void showOverview(Overview which);
    PlotPane& plot() { return *plotPane; }
    LanesPane& lanes() { return *lanesPane; }
    // The messages of the stretch that is marked in the pictures: their places in the index, from
    // the first to one past the last; none where both are 0.
    const IndexTimes::Places& stretch() const { return marked; }

    // What is done now and how far it is, for people.
    QString state() const;
    // Of a hundred; -1 where nothing is done or it is not known.
    int progress() const { return reading.progress(); }
    bool isWorking() const { return reading.isWorking(); }
    // How many messages there are and what is chosen of them.
    QString counts() const { return reading.counts(model->rowCount()); }
    QString place() const;

    // Places in the index of the chosen rows, in their order, up to so many.
    std::vector<std::size_t> chosenPlaces(std::size_t most) const;

    void goTo(std::size_t place);
    // Nothing new is shown while it pauses; it goes on being read.
    void setPaused(bool pauses);
    bool isPaused() const { return paused; }
    // The newest message is always in sight.
    void setFollowing(bool follows);
    bool isFollowing() const { return following; }

public Q_SLOTS:
    // Ends what is being done.
    void cancel();
    void searchNext() { search(false); }
    void searchBack() { search(true); }
    void openSearch();

Q_SIGNALS:
    // What state() and its like say.
    void stateChanged();

private:
    void buildTable();
    void buildSearchBar();
    void buildOverviews();
    void connectAll();
    void applyFilter();
    void showNew();
    void showChoice();
    void showFound(bool isFound, quint64 found);
    void showLast();
    void search(bool backwards);
    void choose();
    void chooseEntry(quint64 place);
    void chooseValue(quint64 place, const FieldPlace& field);
    void showDetail(quint64 place, const std::shared_ptr<const MessageDetail>& newDetail);
    void addEvent(const QString& text, quint64 after);

    Document shown;
    Readings readings;
    ReadingState reading;
    Timeline timeline;
    FilterLine* filterLine;
    MessageList* table;
    QListWidget* events;
    QSplitter* paneRow;
    QTabWidget* overviews;
    LanesPane* lanesPane;
    PlotPane* plotPane;
    IndexTimes::Places marked;
    QWidget* searchBar;
    QLineEdit* searchLine;
    QLabel* searchState;
    std::vector<MessagePane*> panes;

    std::unique_ptr<Rereader> rereader;
    std::unique_ptr<MessageModel> model;
    QString filterText;    // and whether damage is shown beside what it chooses:
    bool filterTroubles = false;
    std::shared_ptr<const MessageDetail> detail;    // that is shown
    std::size_t wanted = SIZE_MAX;                  // place of the chosen message
    FieldPlace wantedField;                         // of it, until it is shown
    bool paused = false;
    bool following = false;
};
