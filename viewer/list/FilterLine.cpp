#include "viewer/list/FilterLine.h"

#include "viewer/colours/KindColours.h"

#include "filter/FilterError.h"
#include "format/EnvelopeField.h"
#include "format/FieldPath.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int moment = 350;    // milliseconds

// What an expression may name: fields, in brackets those of elements alone, and words.
QStringList wordsOfExpressions(const FormatModel& model)
{
    std::vector<const KindModel*> kinds;
    for (const auto& kind : model.kinds()) {
        kinds.push_back(kind.get());
    }
    QStringList words{QStringLiteral("and"), QStringLiteral("or"), QStringLiteral("not"),
                      QStringLiteral("present(")};
    for (const std::string& name : pathNames(kinds)) {
        words.append(QString::fromStdString(name));
    }
    for (const EnvelopeField& field : envelopeFields()) {
        words.append(QString::fromLatin1(field.name));
    }
    words.removeDuplicates();
    words.sort(Qt::CaseInsensitive);
    return words;
}

QString placeholderOf(const FormatModel& model)
{
    const FieldModel* const station = model.unknownKind().field(RTCM2_MEANS_STATION);
    const FieldModel* const type = model.unknownKind().field(RTCM2_MEANS_TYPE);
    return station == nullptr || type == nullptr
               ? QStringLiteral("Filter")
               : QStringLiteral("Filter, such as  %1 == 1 and %2 == 5")
                     .arg(QString::fromStdString(type->identifier),
                          QString::fromStdString(station->identifier));
}

bool belongsToName(QChar character)
{
    return character.isLetterOrNumber() || character == QLatin1Char('_') ||
           character == QLatin1Char('.');
}

}    // namespace

FilterLine::FilterLine(const FormatModel& model)
    : line(new QLineEdit), troubles(new QToolButton), problem(new QLabel),
      names(wordsOfExpressions(model))
{
    line->setPlaceholderText(placeholderOf(model));
    line->setClearButtonEnabled(true);
    line->setAccessibleName(QStringLiteral("Filter"));
    line->installEventFilter(this);
    troubles->setText(QStringLiteral("Damage"));
    troubles->setCheckable(true);
    troubles->setToolTip(QStringLiteral("Also show damaged and undecodable places"));
    problem->setTextFormat(Qt::PlainText);
    problem->setWordWrap(true);
    problem->hide();
    auto* const top = new QHBoxLayout;
    top->addWidget(line);
    top->addWidget(troubles);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    layout->addWidget(problem);

    completer.setModel(&names);
    completer.setWidget(line);
    completer.setCaseSensitivity(Qt::CaseInsensitive);
    completer.setFilterMode(Qt::MatchContains);
    completer.setMaxVisibleItems(12);
    connect(&completer, qOverload<const QString&>(&QCompleter::activated), this,
            &FilterLine::insertName);

    timer.setSingleShot(true);
    timer.setInterval(moment);
    connect(&timer, &QTimer::timeout, this, &FilterLine::changed);
    connect(line, &QLineEdit::textChanged, &timer, qOverload<>(&QTimer::start));
    connect(line, &QLineEdit::textEdited, this, &FilterLine::suggest);
    connect(troubles, &QToolButton::toggled, this, &FilterLine::changed);
}

void FilterLine::setText(const QString& text)
{
    line->setText(text);
}

void FilterLine::takeFocus()
{
    line->setFocus(Qt::ShortcutFocusReason);
    line->selectAll();
}

bool FilterLine::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || completer.popup()->isVisible()) {
        return QWidget::eventFilter(watched, event);
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        timer.stop();
        Q_EMIT changed();
        if (problem->isHidden()) {
            Q_EMIT left();
        }
        return true;
    }
    if (key == Qt::Key_Escape || key == Qt::Key_Down) {
        if (key == Qt::Key_Escape) {
            line->clear();
        }
        Q_EMIT left();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

int FilterLine::beginOfWord() const
{
    const QString text = line->text();
    int begin = line->cursorPosition();
    while (begin > 0 && belongsToName(text[begin - 1])) {
        --begin;
    }
    return begin;
}

void FilterLine::suggest()
{
    constexpr int leastLetters = 2;
    const int begin = beginOfWord();
    const QString word = line->text().mid(begin, line->cursorPosition() - begin);
    completer.setCompletionPrefix(word);
    const bool isKnown = completer.completionCount() == 1 &&
                         completer.currentCompletion().compare(word, Qt::CaseInsensitive) == 0;
    if (word.size() < leastLetters || word[0].isDigit() || completer.completionCount() == 0 ||
        isKnown) {
        completer.popup()->hide();
    } else {
        completer.complete();
    }
}

void FilterLine::insertName(const QString& name)
{
    const int begin = beginOfWord();
    QString text = line->text();
    text.replace(begin, line->cursorPosition() - begin, name);
    line->setText(text);
    line->setCursorPosition(begin + static_cast<int>(name.size()));
}

void FilterLine::showError(const FilterError& error)
{
    const QByteArray utf8 = line->text().toUtf8();
    const auto bytes = static_cast<qsizetype>(error.place.value_or(0));
    const auto place = static_cast<int>(QString::fromUtf8(utf8.left(bytes)).size());
    const std::string& text = error.problem.empty() ? error.text : error.problem;
    problem->setText(
        error.place
            ? QStringLiteral("At character %1: %2").arg(place + 1).arg(QString::fromStdString(text))
            : QString::fromStdString(text));
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::WindowText, troubleColour(palette));
    problem->setPalette(palette);
    problem->show();
    if (error.place) {
        underline(place);
    }
}

void FilterLine::clearError()
{
    problem->hide();
    QInputMethodEvent plain({}, {});
    QCoreApplication::sendEvent(line, &plain);
}

// From a place to the end of the word there; the last character where the text ends there. A line
// takes formats from input methods alone.
void FilterLine::underline(int from)
{
    const QString text = line->text();
    const int size = static_cast<int>(text.size());
    const int begin = std::max(0, std::min(from, size - 1));
    int end = begin;
    while (end < size && belongsToName(text[end])) {
        ++end;
    }
    QTextCharFormat format;
    format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    format.setUnderlineColor(troubleColour(QApplication::palette()));
    const QInputMethodEvent::Attribute attribute(QInputMethodEvent::TextFormat,
                                                 begin - line->cursorPosition(),
                                                 std::max(end - begin, 1), format);
    QInputMethodEvent event({}, {attribute});
    QCoreApplication::sendEvent(line, &event);
}

// Compiled here instead of on its own.
#include "moc_FilterLine.cpp"
