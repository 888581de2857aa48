#include "platform/host/Text.h"
#include "platform/import/CgmesElements.h"
#include "platform/import/CgmesState.h"
#include "platform/import/SequenceDefaults.h"

namespace import {

namespace {

using enum Finding::Kind;

void requireEquipment(const CimStore& cim, const std::string& name) {
    if (!cim.hasProfile("EquipmentCore") && !cim.hasProfile("CoreEquipment"))
        throw ImportError(name, 0, Text::say("没有设备模型（EQ）文件"));
}

void noteProfiles(const CimStore& cim, Tally& tally) {
    const auto need = [&](const char* part, const char* part3, const std::string& what, const std::string& effect) {
        if (!cim.hasProfile(part) && !cim.hasProfile(part3)) tally.note(Missing, what, effect, Text::say("缺文件"));
    };
    need("SteadyStateHypothesis", "SteadyStateHypothesis", Text::say("运行状态"),
         Text::say("开关取正常位置，出力和负荷取 0"));
    need("ShortCircuit", "ShortCircuit", Text::say("短路数据"), Text::say("模型不含短路数据"));
}

}  // namespace

host::NetworkModel readCgmes(const std::filesystem::path& input, const Options& options, Report& report) {
    const std::string name = input.filename().string();
    options.tell(0, Text::say("读文件"));
    const CimStore cim(readDocuments(input));
    options.tell(50, Text::say("建立节点"));
    requireEquipment(cim, name);
    host::NetworkModel model;
    model.name = input.stem().string();
    model.schemes.push_back({"基础方案", {}});
    Tally tally;
    noteProfiles(cim, tally);
    CgmesNodes nodes(cim, options, report, tally, model);
    cgmes::Context context{cim, options, report, tally, nodes, model, {}};
    options.tell(60, Text::say("读设备"));
    cgmes::readSwitches(context);
    cgmes::readLines(context);
    cgmes::readTransformers(context);
    cgmes::readSources(context);
    cgmes::readShunts(context);
    cgmes::readLoads(context);
    cgmes::noteOthers(context);
    cgmes::readLoadFlow(context);
    cgmes::readPositions(context);
    options.tell(90, Text::say("检查"));
    tally.tell(report);
    completeSequenceData(model, options, report);
    check(model, options, report);
    options.tell(100, Text::say("读入完成"));
    return model;
}

}  // namespace import
