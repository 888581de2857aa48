#include "programs/model/RelayCsv.h"

#include <QHash>
#include <algorithm>
#include <cmath>

#include "exchange/TextFile.h"
#include "platform/import/CsvTable.h"
#include "platform/import/Import.h"
#include "programs/frame/RelayTypes.h"

namespace {

const std::vector<std::string>& knownColumns() {
    static const std::vector<std::string> names = {"element", "side", "type", "i_node", "j_node", "ct", "pt"};
    return names;
}

/// Reads the cells of one table by column name, with the place for messages.
class Reader {
  public:
    explicit Reader(const std::string& file) : file_(file), table_(import::parseCsv(exchange::readAll(file), file)) {
        for (const std::string& name : table_.header.cells)
            if (std::find(knownColumns().begin(), knownColumns().end(), name) == knownColumns().end())
                fail(table_.header.line, "没有名为 " + name + " 的列");
        for (const char* needed : {"element", "side", "type"})
            if (column(needed) < 0) fail(table_.header.line, std::string("缺少列 ") + needed);
    }
    QVector<RelayRequest> read();

  private:
    [[noreturn]] void fail(int line, const std::string& what) const { throw import::ImportError(file_, line, what); }
    [[nodiscard]] int column(const std::string& name) const {
        const auto& cells = table_.header.cells;
        const auto it = std::find(cells.begin(), cells.end(), name);
        return it == cells.end() ? -1 : int(it - cells.begin());
    }
    [[nodiscard]] QString cell(const import::CsvRecord& record, const char* name) const {
        const int at = column(name);
        return at < 0 ? QString() : QString::fromStdString(record.cells[size_t(at)]);
    }
    int side(const import::CsvRecord& record) const;
    int type(const import::CsvRecord& record) const;
    double ratio(const import::CsvRecord& record, const char* name) const;
    Location place(const import::CsvRecord& record, int rType);
    const QHash<QString, QVector<Location>>& placesByElement(int rType);

    std::string file_;
    import::CsvTable table_;
    QHash<int, RelayTypeInfo> types_ = readRelayTypes();
    QHash<int, QHash<QString, QVector<Location>>> places_;
};

int Reader::side(const import::CsvRecord& record) const {
    const QString text = cell(record, "side");
    if (text == "I" || text == "1") return 1;
    if (text == "J" || text == "2") return 2;
    fail(record.line, "side 应为 I 或 J: " + text.toStdString());
}

int Reader::type(const import::CsvRecord& record) const {
    const QString text = cell(record, "type");
    for (const RelayTypeInfo& type : types_)
        if (type.RTypeNo > 0 && (QString::number(type.RTypeNo) == text || type.RTypeCode == text)) return type.RTypeNo;
    fail(record.line, "没有保护类型 " + text.toStdString());
}

double Reader::ratio(const import::CsvRecord& record, const char* name) const {
    const QString text = cell(record, name);
    if (text.isEmpty()) return 1;
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value)) fail(record.line, std::string(name) + " 不是数: " + text.toStdString());
    if (value <= 0) fail(record.line, "CT或PT变比不能为0");
    return value;
}

const QHash<QString, QVector<Location>>& Reader::placesByElement(int rType) {
    if (!places_.contains(rType)) {
        auto& byElement = places_[rType];
        QVector<Location> all = RelayStore::locations(rType);
        if (rType == 10) all += RelayStore::locations(12);
        for (const Location& at : all) byElement[at.ID_Name].append(at);
    }
    return places_[rType];
}

Location Reader::place(const import::CsvRecord& record, int rType) {
    const QString element = cell(record, "element");
    const QString iName = cell(record, "i_node");
    const QString jName = cell(record, "j_node");
    const int wanted = side(record);
    QVector<Location> found = placesByElement(rType).value(element);
    found.removeIf([&](const Location& at) {
        return at.Side != wanted || (!iName.isEmpty() && at.I_Name != iName) ||
               (!jName.isEmpty() && at.J_Name != jName);
    });
    if (found.isEmpty()) fail(record.line, "网络中没有可以装设该类保护的位置: " + element.toStdString());
    if (found.size() > 1) fail(record.line, "位置不唯一，请给出 i_node 和 j_node: " + element.toStdString());
    return found.front();
}

QVector<RelayRequest> Reader::read() {
    QVector<RelayRequest> requests;
    for (const import::CsvRecord& record : table_.records) {
        RelayRequest request;
        request.RTypeNo = type(record);
        request.at = place(record, types_[request.RTypeNo].RType);
        request.ctRatio = ratio(record, "ct");
        request.ptRatio = ratio(record, "pt");
        request.origin = QString::fromStdString(file_ + ":" + std::to_string(record.line));
        requests.append(request);
    }
    return requests;
}

}  // namespace

QVector<RelayRequest> readRelayCsv(const std::string& file) { return Reader(file).read(); }
