// Where people choose what is plotted: the field, what tells lines apart, and where lines break.
#pragma once

#include "viewer/plots/PlotFields.h"

#include <QComboBox>
#include <QWidget>

#include <optional>

class FieldBoxes : public QWidget {
    Q_OBJECT

public:
    explicit FieldBoxes(const FormatModel& model);

    // Of these types there are messages. What was chosen stays.
    void setTypes(const std::set<std::uint16_t>& types);
    // Of this name, with what belongs to it by meaning. False where there is none.
    bool choose(const std::string& name);

    // Null where there is nothing to plot, or nothing was chosen.
    const PlotField* field() const;
    const PlotField* key() const { return chosenIn(*keyBox); }
    const PlotField* issue() const { return chosenIn(*issueBox); }

Q_SIGNALS:
    void changed();

private:
    const PlotField* chosenIn(const QComboBox& box) const;
    void listFields();
    void listKeys();
    void offer(QComboBox& box, const PlotField* suggested, const QString& none);

    const FormatModel& format;
    std::optional<PlotFields> fields;
    std::size_t typeCount = 0;
    QComboBox* fieldBox;
    QComboBox* keyBox;
    QComboBox* issueBox;
};
