// The panes of the viewer: which bits belong to which field, what is shown of each, and that
// choosing one side finds the other.
#include "framing/RTCM2_framing.h"
#include "plugin/Plugin.h"
#include "support/SlowBits.h"
#include "viewer/document/AirWords.h"
#include "viewer/document/BrokenMessage.h"
#include "viewer/panes/DetailPane.h"
#include "viewer/panes/FieldCells.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QTest>
#include <QTreeView>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>
#include <set>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Places = std::set<FieldPlace>;
using Values = std::map<FieldPlace, std::vector<double>>;

const FormatModel& format()
{
    static const FormatModel model(plugin::format());
    return model;
}

// Decoded through the table; without a record where the content does not fit.
MessageDetail detailOf(const KindModel& kind, const Bytes& packed)
{
    MessageDetail detail;
    detail.kind = &kind;
    detail.packed = packed;
    detail.table = std::make_unique<TableRecord>();
    const std::int32_t bits = detail.table->decode(*kind.row, packed);
    detail.record = bits >= 0 ? detail.table->get() : nullptr;
    detail.bits = static_cast<std::size_t>(std::max(bits, 0));
    return detail;
}

// Messages of all kinds: those of a sample, and others of any length with random content.
std::vector<MessageDetail> messages()
{
    std::vector<MessageDetail> all;
    std::ifstream file(RTCM2_TEST_SAMPLES "/all-types.packed", std::ios::binary);
    const Bytes sample{std::istreambuf_iterator<char>(file), {}};
    RTCM2_framing_header_s header{};
    for (std::size_t at = 0; RTCM2_read_header(&sample[at], sample.size() - at, &header) != 0;) {
        const std::size_t end = at + (2 + header.data_words) * std::size_t{3};
        if (const RTCM2_kind_s* row = RTCM2_kind_of_type(static_cast<std::int32_t>(header.type))) {
            all.push_back(detailOf(*format().modelOf(row), Bytes(&sample[at], &sample[end])));
        }
        at = end;
    }
    std::mt19937 random(1);
    for (const auto& kind : format().kinds()) {
        for (const unsigned words : {0U, 1U, 5U, 5U, 12U, 31U, 31U}) {
            Bytes packed{0x66, 4, 5, 0x8C, 0xA3, static_cast<std::uint8_t>(words << 3)};
            std::generate_n(std::back_inserter(packed), 3 * words, std::ref(random));
            if (kind->isMain) {
                all.push_back(detailOf(*kind, packed));
            }
        }
    }
    return all;
}

Values valuesOf(const MessageDetail& detail)
{
    Values values;
    eachPlace(detail, [&](const FieldPlace& place, const FieldSpot& spot) {
        const bool isValue = spot.field != nullptr && spot.field->element == nullptr;
        for (std::uint32_t i = 0; isValue && i < RTCM2_count(spot.record, spot.field->row); ++i) {
            double& value = values[place].emplace_back();
            RTCM2_read_real(spot.record, spot.field->row, i, &value);
        }
    });
    return values;
}

// Whether other fields or their number depend on the field's value.
bool shapesTheMessage(const FieldSpot& spot)
{
    return std::any_of(spot.kind->fields.begin(), spot.kind->fields.end(), [&](const auto& other) {
        return other.row->when == spot.field->row || other.row->length == spot.field->row;
    });
}

void checkFlip(const MessageDetail& detail, const Values& before, const BitMap& map,
               std::uint32_t bit)
{
    Bytes packed = detail.packed;
    slow::setBit(packed, bit, !slow::bit(packed, bit));
    const MessageDetail flipped = detailOf(*detail.kind, packed);
    Places lit, shaping;
    for (const auto& [place, values] : before) {
        const FieldSpot spot = spotOf(detail, place);
        if (map.bitsOf(place).holds(bit)) {
            (shapesTheMessage(spot) ? shaping : lit).insert(place);
            EXPECT_TRUE(!concernsMessage(spot) ||
                        map.bitsOf(map.at(bit)).count <= map.bitsOf(place).count);
        }
    }
    EXPECT_EQ(map.at(bit).isNone(), lit.empty() && shaping.empty());
    EXPECT_EQ(map.isFill(bit), bit >= detail.bits);
    if (flipped.record == nullptr) {
        EXPECT_FALSE(shaping.empty());
        return;
    }
    const Values after = valuesOf(flipped);
    EXPECT_TRUE(lit.empty() || before.at(map.at(bit)) != after.at(map.at(bit)));
    for (const auto& [place, values] : before) {
        const auto now = after.find(place);
        const bool hasChanged = now == after.end() || now->second != values;
        const std::uint32_t element = map.bitsOf({place.field, place.element}).first;
        const bool mayMove = !shaping.empty() && std::max(element, map.bitsOf(place).first) > bit;
        EXPECT_TRUE(!hasChanged || lit.contains(place) || shaping.contains(place) || mayMove)
            << spotOf(detail, place).field->name;
    }
}

TEST(ViewerBitMap, AFlippedBitChangesTheFieldsThatHaveItAndNoOther)
{
    std::set<const KindModel*> kinds;
    for (const MessageDetail& detail : messages()) {
        SCOPED_TRACE(detail.kind->name);
        const Values before = valuesOf(detail);
        const BitMap map(detail);
        ASSERT_EQ(map.size(), 8 * detail.packed.size());
        for (std::uint32_t bit = 0; detail.record != nullptr && bit < map.size(); ++bit) {
            SCOPED_TRACE(bit);
            checkFlip(detail, before, map, bit);
        }
        kinds.insert(detail.record != nullptr ? detail.kind : nullptr);
    }
    for (const auto& kind : format().kinds()) {
        EXPECT_EQ(kinds.contains(kind.get()), kind->isMain) << kind->name;
    }
}

TEST(ViewerModels, HoldEachFieldInItsPlaceAndSortByNumbers)
{
    for (const MessageDetail& detail : messages()) {
        SCOPED_TRACE(detail.kind->name);
        const BitMap map(detail);
        FieldTreeModel fields;
        ElementTableModel elements;
        QSortFilterProxyModel sorted;
        sorted.setSourceModel(&elements);
        sorted.setSortRole(ElementTableModel::sortRole);
        const auto reportingMode = QAbstractItemModelTester::FailureReportingMode::Fatal;
        const QAbstractItemModelTester testers[] = {{&fields, reportingMode},
                                                    {&sorted, reportingMode}};
        fields.show(&detail, &map);
        elements.show(&detail);
        eachPlace(detail, [&](const FieldPlace& place, const FieldSpot& spot) {
            EXPECT_EQ(fields.placeOf(fields.indexOf(place)), place);
            EXPECT_EQ(fields.indexOf(place, FieldTreeModel::quantity).data().toString(),
                      quantityOf(spot));
            if (place.part >= 0) {
                EXPECT_EQ(elements.placeOf(elements.indexOf(place)), place);
            }
        });
        for (int column = 0; column < sorted.columnCount(); ++column) {
            sorted.sort(column);
            for (int row = 1; row < sorted.rowCount(); ++row) {
                const QVariant above = sorted.index(row - 1, column).data(sorted.sortRole());
                const QVariant here = sorted.index(row, column).data(sorted.sortRole());
                EXPECT_TRUE(!here.isValid() || above.toDouble() <= here.toDouble());
            }
        }
    }
}

// The message in the pane, which is laid out as on a screen.
struct ShownMessage {
    explicit ShownMessage(const MessageDetail& detail)
    {
        pane.resize(1400, 700);
        pane.QWidget::show();
        pane.show(&detail);
        views = pane.bits().findChildren<BitsView*>();
    }

    DetailPane pane;
    QList<BitsView*> views;    // of the packed message and of the air, in any order
};

void click(QAbstractItemView& view, const QModelIndex& cell)
{
    view.scrollTo(cell);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(cell).center());
}

TEST(ViewerPanes, ChosenBitsFindTheFieldAndAChosenFieldItsBits)
{
    const std::vector<MessageDetail> all = messages();
    for (std::size_t i = 0; i < all.size(); i += 4) {
        const MessageDetail& detail = all[i];
        SCOPED_TRACE(detail.kind->name);
        ShownMessage shown(detail);
        const BitSelection& bits = shown.pane.bits().bits();
        const BitMap& map = bits.map();
        auto& tree = *shown.pane.fields().findChild<QTreeView*>();
        auto& fields = dynamic_cast<FieldTreeModel&>(*tree.model());
        auto& table = *shown.pane.fields().findChild<QTableView*>();
        auto& sorted = dynamic_cast<QSortFilterProxyModel&>(*table.model());
        auto& elements = dynamic_cast<ElementTableModel&>(*sorted.sourceModel());
        eachPlace(detail, [&](const FieldPlace& place, const FieldSpot&) {
            click(tree, fields.indexOf(place));
            EXPECT_EQ(bits.range(), map.bitsOf(place));
            if (place.part >= 0) {
                tree.setCurrentIndex(fields.index(0, 0));
                click(table, sorted.mapFromSource(elements.indexOf(place)));
                EXPECT_EQ(bits.range(), map.bitsOf(place));
            }
        });
        for (std::uint32_t bit = 0; bit < map.size(); bit += 29) {
            const WordBit place = WordBit::ofPacked(bit);
            BitsView& view = *shown.views[bit % 2];
            QTest::mouseClick(&view, Qt::LeftButton, {}, view.rectOf(place).center());
            EXPECT_EQ(bits.cursor(), place);
            EXPECT_EQ(shown.pane.fields().selectedField(), map.at(bit));
            EXPECT_EQ(fields.placeOf(tree.currentIndex()), map.at(bit));
        }
    }
}

TEST(ViewerPanes, KeysMarkBitsThatCanBeCopied)
{
    const MessageDetail detail = std::move(messages().front());
    ShownMessage shown(detail);
    const BitSelection& bits = shown.pane.bits().bits();
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers with = {}, int times = 1) {
        for (; times > 0; --times) {
            QTest::keyClick(shown.views[0], key, with);
        }
    };
    press(Qt::Key_Right);
    press(Qt::Key_Left, Qt::ControlModifier, 2);
    EXPECT_EQ(bits.hexText(), "66");
    press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(bits.bitText(), "000001");
    press(Qt::Key_Left, Qt::ShiftModifier, 4);
    EXPECT_EQ(bits.bitText(), "01100");
    EXPECT_EQ(bits.hexText(), "0c");
    QAction ofTheWindow;
    ofTheWindow.setShortcut(QKeySequence::Copy);
    shown.pane.addAction(&ofTheWindow);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "01100");
    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(bits.range(), (BitRange{0, bits.map().size()}));
}

// The bits that it lights up on the air, those of the word before included, add up to it.
TEST(ViewerPanes, AParityBitIsTheSumOfWhatItLightsUp)
{
    const MessageDetail detail = std::move(messages().front());
    const std::vector<AirWord> words = wordsToSend(detail.packed);
    BitSelection bits;
    bits.setMessage(&detail, words);
    for (int word = 0; word < static_cast<int>(words.size()); ++word) {
        for (int bit = RTCM2_WORD_DATA_BITS; bit < WordBit::perWord; ++bit) {
            bits.moveTo({word, bit}, false);
            std::uint32_t sum = 0;
            int count = 0;
            for (int i = 0; i < static_cast<int>(words.size()) * WordBit::perWord; ++i) {
                const WordBit other{i / WordBit::perWord, i % WordBit::perWord};
                const AirWord& in = words[static_cast<std::size_t>(other.word)];
                const bool isUpright = other.word == word && !other.isParity();
                const std::uint32_t from = isUpright ? in.data << 6 : in.received;
                sum ^= bits.isLit(other) ? from >> (WordBit::perWord - 1 - other.bit) & 1 : 0;
                count += bits.isLit(other) ? 1 : 0;
            }
            EXPECT_EQ(sum, 0U) << "the parity bit is lit up, too";
            std::vector<AirWord> damaged = words;
            const auto flipped = 1U << (WordBit::perWord - 1 - bit);
            damaged[static_cast<std::size_t>(word)].received ^= flipped;
            damaged[static_cast<std::size_t>(word)].goodParity = false;
            EXPECT_EQ(airTable(damaged).rows[static_cast<std::size_t>(word)].wrong,
                      word > 0 ? flipped : 0x3FU);
            EXPECT_GT(count, 10);
        }
    }
}

TEST(ViewerDocument, OfABrokenMessageWhatCameWholeIsShown)
{
    for (const MessageDetail& whole : messages()) {
        SCOPED_TRACE(whole.kind->name);
        const Values before = valuesOf(whole);
        RTCM2_framing_header_s header{};
        RTCM2_read_header(whole.packed.data(), whole.packed.size(), &header);
        const bool isOfItsType = whole.kind->typeNumber == static_cast<int>(header.type);
        for (std::size_t size = 6; isOfItsType && size < whole.packed.size(); size += 3) {
            MessageDetail broken;
            broken.what = Found::What::damaged;
            broken.packed.assign(whole.packed.begin(), whole.packed.begin() + long(size));
            decodeBroken(broken, format());
            const BitMap map(broken);
            for (const auto& [place, values] : valuesOf(broken)) {
                const BitRange bits = map.bitsOf(place);
                EXPECT_LE(bits.end(), 8 * size);
                const auto was = before.find(place);
                ASSERT_NE(was, before.end());
                const bool isBeginning =
                    values.size() <= was->second.size() &&
                    std::equal(values.begin(), values.end(), was->second.begin());
                EXPECT_TRUE(isBeginning || isDerived(spotOf(broken, place)))
                    << nameOf(broken, place).toStdString();
            }
        }
    }
}

// Anything at all, to be run for long with --gtest_repeat=-1 --gtest_shuffle.
TEST(ViewerPanes, AreNotUpsetByAnyClickOrKey)
{
    const auto seed = static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed());
    std::mt19937 random(seed);
    const auto any = [&](int below) { return static_cast<int>(random() % unsigned(below)); };
    const std::vector<MessageDetail> all = messages();
    ShownMessage shown(all.front());
    for (int i = 0; i < 1500; ++i) {
        const QList<QWidget*> widgets = shown.pane.findChildren<QWidget*>();
        QWidget* const widget = widgets[any(static_cast<int>(widgets.size()))];
        const QPoint point(any(std::max(widget->width(), 1)), any(std::max(widget->height(), 1)));
        const Qt::KeyboardModifiers with(any(4) << 25);
        switch (any(6)) {
        case 0:
            shown.pane.show(any(9) == 0 ? nullptr : &all[random() % all.size()]);
            break;
        case 1:
            QTest::mousePress(widget, Qt::LeftButton, with, point);
            break;
        case 2:
            QTest::mouseMove(widget, point);
            break;
        case 3:
            QTest::mouseRelease(widget, Qt::LeftButton, with, point);
            break;
        case 4:
            shown.pane.resize(100 + any(1500), 50 + any(900));
            break;
        default:
            QKeyEvent key(QEvent::KeyPress, any(3) == 0 ? any(96) + 32 : Qt::Key_Escape + any(32),
                          with);
            QApplication::sendEvent(widget, &key);
        }
        QApplication::processEvents();
    }
}

class WithApplication : public testing::Environment {
public:
    void SetUp() override
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application = std::make_unique<QApplication>(count, arguments);
    }
    void TearDown() override { application.reset(); }

private:
    int count = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    std::unique_ptr<QApplication> application;
};

const testing::Environment* const environment =
    testing::AddGlobalTestEnvironment(new WithApplication);

}    // namespace
