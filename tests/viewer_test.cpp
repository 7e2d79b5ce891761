// The viewer shows what the program tells of the same input, while that is read and when it
// changes.
#include "plugin/Plugin.h"
#include "viewer/window/Clipboard.h"
#include "viewer/window/MainWindow.h"
#include "viewer/window/Target.h"

#include "viewer/document/ExportJob.h"

#include <QApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <thread>

namespace {

const std::string samples = RTCM2_TEST_SAMPLES;

const FormatModel& format()
{
    static const FormatModel model(plugin::format());
    return model;
}

// What the program writes.
QString program(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(RTCM2_TEST_PROGRAM), arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void append(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary | std::ios::app) << bytes;
}

bool isIdle(const DocumentView& view)
{
    return !view.isWorking();
}

QString cell(DocumentView& view, int row, MessageModel::Column column)
{
    MessageModel& model = view.messages();
    const auto text = [&] {
        return model.data(model.index(row, column), Qt::DisplayRole).toString();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return text() != QStringLiteral("..."); }));
    return text();
}

// The rows that are messages, as the program lists them, without its columns for AIS.
QStringList rowsOf(DocumentView& view)
{
    QStringList rows;
    for (int row = 0; row < view.messages().rowCount(); ++row) {
        if (view.document().index()[view.messages().placeOf(row)].hasRecord()) {
            const QString type =
                cell(view, row, MessageModel::type).section(QLatin1Char(' '), 0, 0);
            rows.append(
                cell(view, row, MessageModel::number) + ' ' +
                cell(view, row, MessageModel::sentAt) + ' ' +
                cell(view, row, MessageModel::station) + ' ' + type + ' ' +
                cell(view, row, MessageModel::content).section(QStringLiteral("; s"), 0, 0));
        }
    }
    return rows;
}

QStringList listed(QStringList arguments)
{
    QStringList rows;
    for (const QString& line :
         program(QStringList{QStringLiteral("list"), QStringLiteral("-q")} + arguments)
             .split('\n', Qt::SkipEmptyParts)
             .mid(1)) {
        QStringList cells =
            line.split(QRegularExpression(QStringLiteral(" +")), Qt::SkipEmptyParts);
        const bool hasSender = cells[1].size() == 7 && !cells[1].contains(':');
        cells.remove(1, hasSender ? 3 : 0);
        const QString content = line.section(QRegularExpression(QStringLiteral(" +")),
                                             hasSender ? 7 : 4, -1, QString::SectionSkipEmpty);
        rows.append(cells.mid(0, 4).join(' ') + ' ' + content);
    }
    return rows;
}

}    // namespace

class Viewer : public testing::Test {
protected:
    DocumentView& open(const std::string& name, bool follows = false)
    {
        DocumentView* const view = window.open({.name = name, .follows = follows});
        EXPECT_TRUE(follows || QTest::qWaitFor([&] { return isIdle(*view); }));
        return *view;
    }
    void choose(DocumentView& view, const char* where)
    {
        view.filter().setText(QString::fromLatin1(where));
        Q_EMIT view.filter().changed();
        EXPECT_TRUE(QTest::qWaitFor([&] { return isIdle(view) || view.document().isReading(); }));
        QTest::qWait(60);
    }

    QTemporaryDir folder;
    std::string path = folder.filePath(QStringLiteral("capture")).toStdString();
    MainWindow window{format()};
};

// Also with another schema, for which RTCM2_TEST_WHERE has another expression.
TEST_F(Viewer, ListsWhatTheProgramLists)
{
    const QString where = qEnvironmentVariable("RTCM2_TEST_WHERE", QStringLiteral("Ns > 3"));
    for (const auto& file : std::filesystem::directory_iterator(samples)) {
        if (!file.is_regular_file() || file.path().extension() == ".md" ||
            file.path().filename() == ".gitattributes") {
            continue;
        }
        const QString name = QString::fromStdString(file.path().string());
        DocumentView& view = open(file.path());
        EXPECT_EQ(rowsOf(view), listed({name})) << file;
        choose(view, where.toUtf8());
        EXPECT_EQ(rowsOf(view), listed({QStringLiteral("--where"), where, name})) << file;
    }
}

TEST_F(Viewer, ShowsAWrongFilterAndKeepsTheLastOne)
{
    DocumentView& view = open(samples + "/demo.rtcm2");
    choose(view, "Ns > 3");
    const int rows = view.messages().rowCount();
    for (const auto& [where, told] :
         {std::pair("Ns > ", "character 6"), {"Ns > 3 and Foo == 1", "character 12"}}) {
        choose(view, where);
        bool isTold = false;
        for (const QLabel* const label : view.filter().findChildren<QLabel*>()) {
            isTold = isTold || (!label->isHidden() && label->text().contains(QLatin1String(told)));
        }
        EXPECT_TRUE(isTold) << where;
        EXPECT_EQ(view.messages().rowCount(), rows);
    }
    choose(view, "");
    EXPECT_EQ(view.messages().rowCount(), 105);
}

TEST_F(Viewer, GoesToNumbersBytesAndTimes)
{
    const MessageIndex& index = open(samples + "/demo.rtcm2").document().index();
    for (const auto& [text, here, place] : {std::tuple("17", 50, 16),
                                            {"@70", 0, 1},
                                            {"@229", 0, 4},
                                            {" 30:03", 0, 2},
                                            {"30:03", 2, 3},
                                            {"0:31:00", 9, 35},
                                            {"30:03.0", 104, 2}}) {
        const Target target = targetOf(text, index, static_cast<std::size_t>(here));
        EXPECT_EQ(target.place, static_cast<std::size_t>(place)) << text << target.problem;
    }
    for (const char* const text :
         {"0", "106", "@5835", "12:00", "1:00:00", "x", "", "@", "99:99"}) {
        EXPECT_FALSE(targetOf(text, index, 0).problem.empty()) << text;
    }
}

TEST_F(Viewer, SearchesBothWaysAmongWhatIsShown)
{
    DocumentView& view = open(samples + "/demo.rtcm2");
    choose(view, "Reference_Station_Id == 417 and Sequence_No < 4");
    auto* const line = view.findChildren<QLineEdit*>().last();
    line->setText(QStringLiteral("REFERENCE point"));
    const auto found = [&](void (DocumentView::*search)()) {
        (view.*search)();
        EXPECT_TRUE(QTest::qWaitFor([&] { return isIdle(view); }));
        return cell(view, view.list().currentIndex().row(), MessageModel::number).toInt();
    };
    const std::vector<int> numbers{
        found(&DocumentView::searchNext), found(&DocumentView::searchNext),
        found(&DocumentView::searchBack), found(&DocumentView::searchBack)};
    EXPECT_EQ(numbers, (std::vector<int>{3, 73, 3, 91}));
}

TEST_F(Viewer, FollowsAFileThatGrowsAndPauses)
{
    const std::string all = contentOf(samples + "/demo.rtcm2");
    append(path, all.substr(0, 1000));
    DocumentView& view = open(path, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.messages().rowCount() > 15; }));
    choose(view, "Ns > 3");
    view.setPaused(true);
    append(path, all.substr(1000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.document().index().size() >= 104; }));
    EXPECT_LT(view.messages().rowCount(), 20);
    view.setPaused(false);
    view.document().isReading() ? view.cancel() : void();
    choose(view, "");
    view.cancel();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isIdle(view); }));
    EXPECT_EQ(view.messages().rowCount(), static_cast<int>(view.document().index().size()));
    EXPECT_EQ(rowsOf(view), listed({QString::fromStdString(samples + "/demo.rtcm2")})
                                .mid(0, view.messages().rowCount()));
}

TEST_F(Viewer, KeepsWhatComesFromAPipe)
{
    ASSERT_EQ(QProcess::execute(QStringLiteral("mkfifo"), {QString::fromStdString(path)}), 0);
    std::thread writer([&] { append(path, contentOf(samples + "/damaged.rtcm2")); });
    DocumentView& view = open(path, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return isIdle(view); }));
    writer.join();
    EXPECT_EQ(rowsOf(view), listed({QString::fromStdString(samples + "/damaged.rtcm2")}));
}

TEST_F(Viewer, TellsThatAFileHasGoneOrChanged)
{
    append(path, contentOf(samples + "/demo.rtcm2"));
    DocumentView& view = open(path);
    std::filesystem::remove(path);
    EXPECT_TRUE(cell(view, 100, MessageModel::content).contains(QStringLiteral("No such file")));
    append(path, contentOf(samples + "/damaged.rtcm2"));
    EXPECT_TRUE(cell(view, 20, MessageModel::content).contains(QStringLiteral("has changed")));
    view.goTo(30);
    QTest::qWait(100);
    DocumentView& missing = open("/nowhere/at/all");
    EXPECT_EQ(missing.messages().rowCount(), 0);
    ASSERT_EQ(missing.findChild<QListWidget*>()->count(), 1);
}

TEST_F(Viewer, CopiesAndExportsWhatTheProgramWrites)
{
    const QString file = QString::fromStdString(samples + "/damaged.rtcm2");
    DocumentView& view = open(file.toStdString());
    std::vector<std::size_t> all(view.document().index().size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    EXPECT_EQ(textOfRows(view, CopyForm::json, all),
              program({QStringLiteral("export"), QStringLiteral("-q"), QStringLiteral("--raw"),
                       QStringLiteral("--scaled"), QStringLiteral("--texts"), file}));
    EXPECT_EQ(textOfRows(view, CopyForm::text, {2}).section('\n', 1, 1),
              QStringLiteral("3\t134\t30:03.0\t417\t3  GPS Reference Station Parameters\t"
                             "Reference point 3705294.33 513572.04 5148765.99 m"));
    const auto exported = [&](ExportForm form, const char* where) {
        ExportJob job(format(), view.document().again(),
                      {.form = form, .path = path, .where = where});
        EXPECT_TRUE(QTest::qWaitFor([&] { return job.isFinished(); }));
        EXPECT_EQ(job.problem(), "");
        return QString::fromStdString(contentOf(path));
    };
    EXPECT_EQ(exported(ExportForm::ndjson, "Ns > 3"),
              program({QStringLiteral("export"), QStringLiteral("-q"), QStringLiteral("--where"),
                       QStringLiteral("Ns > 3"), file}));
    EXPECT_EQ(exported(ExportForm::hex, ""),
              program({QStringLiteral("convert"), QStringLiteral("-q"), QStringLiteral("--to"),
                       QStringLiteral("hex"), file}));
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
