#include <QHash>
#include <QSet>
#include <cmath>

#include "exchange/FileNames.h"
#include "exchange/ModeFile.h"
#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/CRelayInputCal.h"
#include "programs/engine/WorkFiles.h"
#include "programs/frame/LocationKey.h"
#include "programs/frame/Messages.h"

namespace {

constexpr double kBaseMva = 100.0;
constexpr double kCutOut = 9999999.0;

struct Mode {
    int sysNo;
    QString name;
};

/// A branch change of an operating mode as the user entered it.
struct Change {
    QString idName, iName, jName;
    int m10 = 1;
    bool ohm = false;
    QString r, x;
    double rValue = 0, xValue = 0;
};

struct Ends {
    int idNo = 0, first = 0, second = 0;
};

void addModes(const char* query, int caseNo, QVector<Mode>& modes, QSet<int>& known) {
    sql::Query q;
    q.exec(query, {caseNo});
    while (q.next()) {
        if (known.contains(q.number(0))) continue;
        known.insert(q.number(0));
        modes.push_back({q.number(0), q.text(1)});
    }
}

QHash<int, QVector<Change>> changesOf(const QVector<Mode>& modes) {
    QHash<int, QVector<Change>> changes;
    if (modes.isEmpty()) return changes;
    QVariantList numbers;
    for (const Mode& mode : modes) numbers.append(mode.sysNo);
    sql::Query q;
    q.exec("SELECT SysNo,ID_Name,I_Name,J_Name,M10,UNIT,R,X FROM RLY_RSYSMODEDLS WHERE SysNo IN (" +
               QStringList(numbers.size(), "?").join(",") + ")",
           numbers);
    while (q.next())
        changes[q.number(0)].push_back(
            {q.text(1), q.text(2), q.text(3), q.number(4), q.number(5) == 1, q.raw(6), q.raw(7), q.real(6), q.real(7)});
    return changes;
}

/// What writing a mode looks up, each table read once and only when it is needed.
class Places {
  public:
    std::optional<Ends> ends(const Change& change) {
        const BranchRow* row = branches_->find(change.idName, change.iName, change.jName);
        if (!row) return withoutBranch(change);
        if (change.m10 == 0 && (row->flg == 2 || row->flg == 3)) return zeroSequencePath(change, *row);
        return Ends{row->idNo, row->iNo, row->jNo};
    }

    double baseKv(const QString& node) {
        if (kv_.isEmpty()) {
            sql::Query q;
            q.exec("SELECT Node_Name,Base_kV FROM CDB_NODEBAK");
            while (q.next()) kv_.insert(q.text(0), q.real(1));
        }
        return kv_.value(node, 0.0);
    }

  private:
    std::optional<Ends> zeroSequencePath(const Change& change, const BranchRow& row) {
        switch (zeroSequenceType(change)) {
            case 1:
                return Ends{row.idNo, row.iNo, row.iNo};
            case 2:
                return Ends{row.idNo, row.jNo, row.jNo};
            case 3:
                return Ends{row.idNo, row.iNo, row.jNo};
            default:
                break;
        }
        ReportError(Text::tr("变压器支路") + change.idName + Text::tr("没有零序通路"), 1);
        return std::nullopt;
    }

    int zeroSequenceType(const Change& change) {
        if (!zcRead_) {
            zcRead_ = true;
            sql::Query q;
            q.exec("SELECT ID_Name,I_Name,J_Name,ZCtype FROM S3_0");
            while (q.next()) zc_.insert(locationKey(q.text(0), q.text(1), q.text(2)), q.number(3));
        }
        return zc_.value(locationKey(change.idName, change.iName, change.jName), 0);
    }

    std::optional<Ends> withoutBranch(const Change& change) {
        const QString missing = Text::tr("） 不存在、无效或不在当前方案中");
        if (change.m10 == 1)
            ReportError(Text::tr("正序支路") + change.idName + "（" + change.iName + "  " + change.jName + missing, 1);
        else if (change.m10 != 0)
            ReportError(Text::tr("支路类型错误"), 1);
        else if (change.iName == change.jName)
            return atOneBus(change);
        else
            ReportError(Text::tr("零序支路") + change.idName + "（" + change.iName + change.jName + missing, 1);
        return std::nullopt;
    }

    std::optional<Ends> atOneBus(const Change& change) {
        const std::optional<int> node = branches_->nodeNumber(change.iName);
        if (!node) {
            ReportError(Text::tr("母线") + change.jName + Text::tr("不存在、无效或不在当前方案中"), 1);
            return std::nullopt;
        }
        for (const BranchRow& row : branches_->rows())
            if (row.idName == change.idName) return Ends{row.idNo, *node, *node};
        return Ends{0, *node, *node};
    }

    std::shared_ptr<const BranchTable> branches_ = BranchTable::current();
    QHash<QString, int> zc_;
    bool zcRead_ = false;
    QHash<QString, double> kv_;
};

bool cutsOut(const Change& change) {
    return std::fabs(change.rValue) >= kCutOut || std::fabs(change.xValue) >= kCutOut;
}

/// The file has no unit field: what was entered in ohm goes out per unit. \return false when there is no base voltage
bool toPerUnit(Change& change, Places& places) {
    if (!change.ohm || cutsOut(change)) return true;
    const double kv = places.baseKv(change.iName);
    if (!(kv > 0)) {
        ReportError(Text::tr("支路") + change.idName + Text::tr("的节点") + change.iName +
                        Text::tr("没有基准电压，不能折算运行方式中的阻抗"),
                    1);
        return false;
    }
    const double factor = kBaseMva / (kv * kv);
    change.r = QString::number(change.rValue * factor, 'g', 12);
    change.x = QString::number(change.xValue * factor, 'g', 12);
    return true;
}

std::string textOf(int sysNo, QVector<Change> changes, Places& places) {
    std::string text;
    for (Change& change : changes) {
        const std::optional<Ends> ends = places.ends(change);
        if (!ends || !toPerUnit(change, places)) continue;
        text += exchange::format(exchange::ModeElement{sysNo, ends->idNo, ends->first, ends->second, change.m10,
                                                       change.r.toStdString(), change.x.toStdString()});
    }
    return text;
}

}  // namespace

bool CRelayInputCal::WriteModeFile(int mode) {
    QVector<Mode> modes;
    QSet<int> known;
    if (mode == 1) {
        addModes("SELECT DISTINCT SysNo,SysName FROM RLY_RUDSYS WHERE Case_No=?", caseNo_, modes, known);
        addModes("SELECT DISTINCT SysNo,SysName FROM RLY_FZXSSYS WHERE Case_No=?", caseNo_, modes, known);
    } else {
        addModes("SELECT DISTINCT SysNo,SysName FROM RLY_KLMFSYS WHERE Case_No=?", modeCaseNo(), modes, known);
    }
    const auto changes = changesOf(modes);
    Places places;
    std::string text;
    for (const Mode& m : modes) {
        if (!changes.contains(m.sysNo))
            ReportError(Text::tr("作业中选择的运行方式 ") + m.name + Text::tr(" 没有定义"), 1);
        text += textOf(m.sysNo, changes.value(m.sysNo), places);
    }
    return work::write(workDir_, exchange::file::kModes, text);
}
