#include <sqlite3.h>

#include <QDirIterator>
#include <QSet>

#include "platform/server/Server.h"
#include "platform/sql/Sql.h"
#include "tests/flow/CommandLine.h"

using testing::HasSubstr;

namespace {

// What breaks names: quotes, a backslash at the end (also as the second byte of a GBK character), a percent sign with a
// digit, leading blanks, a comma, the full length, what looks like the end of a label, a bracketed argument.
const QString tLine = R"(甲'丙"线\%2\)";
const QString commaLine = "  丙,丁 线%1$s";
const QString fullLine = "昞一二三四五六七八九十一二三四五六七八昞";
const QString labelLine = "丁 ',线{0}";
const QString unit = R"(1号'主变",\%3)";
const QString machine = R"(  1'号"机%2\)";
const QString feeder = R"(乗%网\n等值)";
const QString stationA = R"( 甲'站\%1,)";
const QString nodeA = R"(  甲'站"110%1)";
const QString nodeT = R"(T\接,点%2")";
const QString nodeC = "丙站二三四五六七八九十一二三四五六七八昞";
const QString nodeD = R"(丁',站\)";
const QString nodeG = R"( 机'端,10kV%3\)";
const QString mode = R"(最大'%1"\)";
const QString caseName = R"(作'业,%1\)";
const QString project = "名'称%1 一";

const QSet<QString> lines{tLine, commaLine, fullLine, labelLine};
const QSet<QString> nodes{nodeA, nodeT, nodeC, nodeD, nodeG};

QString cell(QString text) { return '"' + text.replace('"', "\"\"") + '"'; }

/// One file of a network: the columns given, all others of its kind empty.
void writeTable(const QString& folder, const QString& file, const QStringList& columns,
                const QList<QStringList>& rows) {
    QFile model(MORVANE_SOURCE_DIR "/data/networks/demo/" + file);
    ASSERT_TRUE(model.open(QIODevice::ReadOnly));
    const QString header = model.readLine().trimmed();
    QStringList text{header};
    for (const QStringList& row : rows) {
        QStringList cells;
        for (const QString& column : header.split(',')) cells << cell(row.value(columns.indexOf(column)));
        text << cells.join(',');
    }
    writeLines(folder, file, text);
}

/// A T node with three lines, a machine behind a transformer, a feeder and a station behind it.
void writeNetwork(const QString& folder) {
    writeTable(folder, "stations.csv", {"name", "x", "y"}, {{stationA, "10", "20"}});
    writeTable(folder, "nodes.csv", {"name", "station", "base_kv", "node_type"},
               {{nodeA, stationA, "110"},
                {nodeT, "", "110", "1"},
                {nodeC, "", "110"},
                {nodeD, "", "110"},
                {nodeG, stationA, "10"}});
    QList<QStringList> rows{
        {tLine, nodeA, nodeT}, {commaLine, nodeT, nodeC}, {fullLine, nodeT, nodeD}, {labelLine, nodeC, nodeD}};
    for (QStringList& row : rows) row << QStringList{"3.06", "7.2", "7.56", "24.3", "18"};
    writeTable(folder, "lines.csv", {"name", "node_i", "node_j", "r1_ohm", "x1_ohm", "r0_ohm", "x0_ohm", "length_km"},
               rows);
    writeTable(folder, "transformers2.csv",
               {"name", "node_i", "node_j", "kv_i", "kv_j", "mva", "grounding_i", "grounding_j", "uk_percent", "pk_kw"},
               {{unit, nodeA, nodeG, "115", "10.5", "63", "YN", "D", "10.5", "260"},
                {"2号主变", nodeA, nodeG, "115", "10.5", "63", "YN", "D", "10.5", "260"}});
    writeTable(folder, "generators.csv", {"name", "node", "kind", "mva", "kv", "xd2_percent", "x0_percent", "grounded"},
               {{machine, nodeG, "generator", "60", "10.5", "18", "", "0"},
                {feeder, nodeC, "feeder", "1000", "110", "100", "150", "1"}});
}

/// Texts of a column list of a SELECT, all rows and columns as one set.
QSet<QString> texts(const QString& statement) {
    QSet<QString> found;
    sql::Query query;
    EXPECT_TRUE(query.exec(statement));
    while (query.next())
        if (!query.text(0).isEmpty()) found.insert(query.text(0));
    return found;
}

/// One column of the real-time file.
QSet<QString> realTime(const QString& file, const char* statement) {
    QSet<QString> found;
    sqlite3* db = nullptr;
    sqlite3_stmt* row = nullptr;
    EXPECT_EQ(sqlite3_open(file.toUtf8().constData(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(db, statement, -1, &row, nullptr), SQLITE_OK);
    while (sqlite3_step(row) == SQLITE_ROW)
        found.insert(sql::fromGbk(
            {static_cast<const char*>(sqlite3_column_blob(row, 0)), qsizetype(sqlite3_column_bytes(row, 0))}));
    sqlite3_finalize(row);
    sqlite3_close(db);
    return found;
}

QByteArray bytesOf(const QString& file) {
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

QSet<QString> fieldOf(const nlohmann::json& rows, const char* field) {
    QSet<QString> found;
    for (const auto& row : rows) found.insert(QString::fromStdString(row[field]));
    return found;
}

/// The network with difficult names, with settings calculated for all relays of its lines.
class DifficultNames : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        QTemporaryDir folder;
        writeNetwork(folder.path());
        callAll(
            {{"project", "new", project},
             {"import", project, folder.path()},
             {"relays", "install", project, "--type", "1", "3", "--level", "110", "--ct", "120", "--pt", "1100"},
             {"relays", "virtual", project},
             {"modes", "add", project, mode, "--cut", unit},
             {"case", "new", project, "--type", "3", "--name", caseName, "--max", mode, "--min", mode, "--sens", mode},
             {"case", "run", project, caseName, "--klm"},
             {"case", "save", project, caseName}});
        QString error;
        ASSERT_TRUE(server::openConnection("QMYSQL3", project, "", "", "", "", &error)) << error.toStdString();
    }
    static void TearDownTestSuite() {
        server::closeConnection("");
        EXPECT_EQ(call({"project", "delete", project}).code, 0);
    }
};

}  // namespace

TEST_F(DifficultNames, StandUnchangedInEveryTable) {
    EXPECT_EQ(texts("SELECT PS_Name FROM CDB_STATIONBAK"), QSet<QString>{stationA});
    EXPECT_EQ(texts("SELECT Node_Name FROM CDB_NODEBAK"), nodes);
    EXPECT_EQ(texts("SELECT ID_Name FROM CDB_GENERATBAK"), (QSet<QString>{machine, feeder}));
    const QSet<QString> elements = lines + QSet<QString>{unit, "2号主变", machine, feeder};
    const QList<std::pair<QString, QSet<QString>>> meanings{
        {"ID\\_Name", elements}, {"I\\_Name", nodes}, {"J\\_Name", nodes}, {"SysName", {mode}}};
    QSet<QString> filled;
    for (const auto& [ending, known] : meanings) {
        sql::Query columns;
        ASSERT_TRUE(
            columns.exec("SELECT TABLE_NAME,COLUMN_NAME FROM information_schema.COLUMNS WHERE "
                         "TABLE_SCHEMA=DATABASE() AND COLUMN_NAME LIKE ?",
                         {"%" + ending}));
        while (columns.next()) {
            const QString table = columns.text(0), column = columns.text(1);
            const QSet<QString> found = texts("SELECT DISTINCT `" + column + "` FROM `" + table + "`");
            if (!found.isEmpty()) filled.insert(table + "." + column);
            for (const QString& name : found - known)
                ADD_FAILURE() << (table + "." + column + ": " + name).toStdString();
        }
    }
    for (const char* column : {"RLY_RUD.ID_Name", "RLY_DUMRLY.ID_Name", "RLY_RLYOBJ_TEM.I_Name",
                               "RLY_RRBRANCH_TEM.J_Name", "RLY_RUDSYS.SysName", "RLY_RDZTEM.ID_Name"})
        EXPECT_TRUE(filled.contains(column)) << column;
}

TEST_F(DifficultNames, StandUnchangedInTheFilesOfTheCalculation) {
    const QString folder = directoryOf(project);
    for (const auto& relay : call({"relays", "list", project, "--type", "3", "--json"}).json()) {
        const QString number = QString::number(int(relay["number"])), single = "单" + number;
        callAll({{"case", "new", project, "--type", "3", "--name", single, "--relay", number, "--part", "1", "--max",
                  mode, "--min", mode},
                 {"case", "run", project, single},
                 {"case", "delete", project, single}});
        const QByteArray element = sql::toGbk(QString::fromStdString(relay["element"]));
        EXPECT_TRUE(bytesOf(folder + "Temp/RELAY.R1").contains("' " + element + "  ")) << relay;
    }
    const QByteArray names = bytesOf(folder + "Temp/NAME.INC");
    for (const QString& name : nodes + QSet<QString>{machine, feeder})
        EXPECT_TRUE(names.contains("," + sql::toGbk(name) + "\r\n")) << name.toStdString();

    QDirIterator files(folder, {"*"}, QDir::Files, QDirIterator::Subdirectories);
    QString file;
    while (files.hasNext())
        if (bytesOf(files.next()).startsWith("SQLite")) file = files.filePath();
    ASSERT_FALSE(file.isEmpty());
    EXPECT_EQ(realTime(file, "SELECT id FROM nd"), nodes);
    EXPECT_EQ(realTime(file, "SELECT substr(id,1,length(id)-3) FROM ln"), lines);
    EXPECT_EQ(realTime(file, "SELECT inode FROM ln UNION SELECT jnode FROM ln"), nodes - QSet<QString>{nodeG});
    EXPECT_EQ(realTime(file, "SELECT id FROM un"), (QSet<QString>{machine, feeder}));
}

TEST_F(DifficultNames, ComeBackFromTheCommandLine) {
    const auto relays = call({"relays", "list", project, "--json"}).json();
    EXPECT_EQ(relays.size(), 10U) << "none at the T node";
    EXPECT_EQ(fieldOf(relays, "element"), lines);
    EXPECT_EQ(call({"case", "list", project, "--json"}).json()[0]["name"], caseName.toStdString());
    const auto settings = call({"export", "settings", project, "--type", "3", "--json"}).json();
    EXPECT_EQ(fieldOf(settings, "element"), lines);
    EXPECT_EQ(fieldOf(settings, "i") + fieldOf(settings, "j"), nodes - QSet<QString>{nodeG});
    int firstStages = 0;
    for (const auto& row : settings)
        firstStages += row["setting"] == "Idz" && row["part"] == 1 && double(row["primary"]) > 0;
    EXPECT_EQ(firstStages, 5);
    const std::string csv = call({"export", "settings", project, "--csv"}).out;
    for (const QString& name : lines) {
        const bool quoted = name.contains('"') || name.contains(',');
        EXPECT_THAT(csv, HasSubstr((',' + (quoted ? cell(name) : name) + ',').toStdString())) << name.toStdString();
    }
}

TEST_F(DifficultNames, ComeBackFromAnExportOfTheNetwork) {
    QTemporaryDir folder;
    callAll(
        {{"project", "export", project, folder.path()}, {"project", "new", "再读"}, {"import", "再读", folder.path()}});
    callAll({{"relays", "install", "再读", "--type", "3", "--level", "110"}});
    const auto relays = call({"relays", "list", "再读", "--json"}).json();
    EXPECT_EQ(fieldOf(relays, "element"), lines);
    EXPECT_EQ(call({"project", "delete", "再读"}).code, 0);
}

TEST(RefusedNames, AreToldWithFileAndRow) {
    callAll({{"project", "new", "空", "--replace"}});
    for (const char* bad : {"丙站 ", "丙\t站", "丙\x01站", "一二三四五六七八九十一二三四五六七八九十一", "丙😀"}) {
        QTemporaryDir folder;
        writeTable(folder.path(), "nodes.csv", {"name", "base_kv"}, {{"甲站", "110"}, {"乙站", "110"}, {bad, "110"}});
        const Answer answer = call({"import", "空", folder.path()});
        EXPECT_EQ(answer.code, 2) << bad;
        EXPECT_THAT(answer.err, HasSubstr("nodes.csv:4: ")) << bad;
    }
    EXPECT_EQ(call({"project", "delete", "空"}).code, 0);
}
