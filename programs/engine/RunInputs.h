#pragma once

#include <QHash>
#include <QSet>
#include <QVariant>
#include <QVector>
#include <array>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "exchange/RelayFile.h"
#include "programs/engine/RowCursor.h"

struct ElementName {
    QString idName, iName, jName;
};

/// A fault that the user set for a rule of a relay, or for a sensitivity rule at a place.
struct UserFault {
    int pno = 1, rMode = 0, mType = 0;
    ElementName element;
    int kLoc = 0, fType = 1;
    double r = 0, x = 0;
    int flg = 0;
};

/// The values of one setting name, by part, as the database's text; a relay's settings in `DzNo` order.
using SettingValues = std::array<std::string, 5>;
using SettingsOfRelay = std::vector<SettingValues>;
using SettingsByRelay = QHash<int, SettingsOfRelay>;

/// An installed relay, with its block of the relay file but for the parts; without one it is not in the network.
struct InstalledRelay {
    int rno = 0;
    QString place;                                      ///< key of its location
    double ctPri = 1, ctSec = 1, ptPri = 1, ptSec = 1;  ///< its transformers' ratios
    std::optional<exchange::RelayBlock> block;
};

/// What a run reads and nothing changes while it is under way, read at the first need and kept.
class RunInputs {
  public:
    /// \param modeCaseNo  case whose operating modes a sensitivity run uses
    RunInputs(int caseNo, int modeCaseNo, QString typeCode);

    /// Null when there is no such relay.
    const InstalledRelay* relay(int rno);
    const std::vector<InstalledRelay>& relaysOfType(int rTypeNo);
    const SettingsOfRelay& storedSettings(int rTypeNo, int rno);

    QHash<int, QVector<UserFault>> userFaults(const SettingRow& row);  ///< by mode of the rule
    QVector<ElementName> outagesOfRelay(int rno);
    QVector<ElementName> outagesOfMainBranch(const ElementName& branch, int side);
    std::vector<int> modesOfMainBranch(const ElementName& branch, int side);
    /// Operating modes of a setting rule by its `SFlg`: 1 maximum, 2 minimum, 3 both, maximum first.
    std::vector<int> modes(int sFlg);
    const std::vector<int>& sensitivityModes();
    int parameterVector(int rno, int pno, int ruleNo);

    /// The rules of a relay part in calculation order, each with its relay type.
    struct ListedRule {
        int ruleNo = 0, prTypeNo = 0;
    };
    const std::vector<ListedRule>& rulesOfPart(int rno, int pno);
    /// `ID` of a setting row; 0 when there is none.
    int settingRowId(int rno, int pno, int ruleNo, const QString& cdz);

  private:
    using ElementsByPlace = QHash<QString, QVector<ElementName>>;
    void readRelays();
    void readSettingRows();
    void readModes();

    int caseNo_, modeCaseNo_;
    QString typeCode_;
    bool relaysRead_ = false, rowsRead_ = false, modesRead_ = false;
    QHash<int, std::vector<InstalledRelay>> relaysOfType_;
    QHash<int, std::pair<int, int>> relays_;  ///< type and position
    QSet<int> typesRead_;
    SettingsByRelay storedSettings_;
    std::optional<QHash<QString, QVector<UserFault>>> userFaults_;
    std::optional<QHash<int, QVector<ElementName>>> outagesOfRelay_;
    std::optional<ElementsByPlace> outagesOfMainBranch_;
    QHash<QString, std::vector<int>> modesOfMainBranch_;
    std::vector<int> maximum_, minimum_, sensitivity_;
    std::optional<std::map<std::tuple<int, int, int>, int>> parameterVectors_;
    std::map<std::pair<int, int>, std::vector<ListedRule>> rulesOfPart_;
    std::map<std::tuple<int, int, int, QString>, int> rowIds_;
};

/// The new settings of all relays of the case, or of one (not 0), as they stand now.
SettingsByRelay readWorkingSettings(int rno = 0);
