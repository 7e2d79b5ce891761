// What reads a document again beside the window: for the messages that a filter chooses, and for a
// text.
#pragma once

#include "viewer/document/Document.h"
#include "viewer/document/FilterPass.h"
#include "viewer/document/SearchPass.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class Readings : public QObject {
    Q_OBJECT

public:
    // The document must outlive them.
    explicit Readings(const Document& read);

    // Chooses messages; what was chosen before stays until there is something else to show. Throws
    // FilterError.
    void filter(const std::string& where, bool withTroubles);
    // All messages are chosen.
    void dropFilter();
    // Looks for a text among what is chosen, behind a place in the index or before it.
    void search(const SearchPass::Options& options);
    void endSearch();

    // Null where all messages are chosen.
    const Selection* chosen() const { return inUse != nullptr ? &inUse->chosen() : nullptr; }

    bool isFiltering() const;
    bool isSearching() const { return searching != nullptr; }
    std::uint64_t bytesFiltered() const;
    std::size_t messagesSearched() const { return isSearching() ? searching->progress() : 0; }

Q_SIGNALS:
    // Others are chosen; those that were before go when this has been heard.
    void choiceChanged();
    // More may have been read; a few times a second.
    void went();
    void searchEnded(bool isFound, quint64 place);

private:
    template <class Reading>
    void retire(std::shared_ptr<Reading>& reading);
    void begin(const FilterPass::Options& options);
    void look();
    void lookAtFilter();
    void lookAtSearch();

    struct Retired {
        std::function<bool()> isFinished;    // holds the reading, too
    };

    const Document& document;
    FilterPass::Options filterOptions;
    std::shared_ptr<FilterPass> inUse;
    std::shared_ptr<FilterPass> next;    // takes its place as soon as it has something
    std::shared_ptr<SearchPass> searching;
    std::vector<Retired> retired;
    QTimer timer;
};
