#include "platform/import/CimStore.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "platform/host/Text.h"

namespace import {

namespace {

std::string_view localName(const char* name) {
    const char* const colon = std::strchr(name, ':');
    return colon ? colon + 1 : name;
}

/// An identifier or reference without what the notations put before it; of an enumeration the value is left.
std::string_view bare(std::string_view id) {
    if (const auto hash = id.rfind('#'); hash != std::string_view::npos) id.remove_prefix(hash + 1);
    if (id.starts_with("urn:uuid:")) id.remove_prefix(9);
    if (id.starts_with("_")) id.remove_prefix(1);
    return id;
}

std::string_view attributeByLocalName(pugi::xml_node node, std::string_view name) {
    for (pugi::xml_attribute a : node.attributes())
        if (localName(a.name()) == name) return a.value();
    return {};
}

int lineAt(std::string_view bytes, std::ptrdiff_t offset) {
    const auto end = std::min(bytes.size(), static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, offset)));
    return 1 + static_cast<int>(std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
}

bool isKnownCim(pugi::xml_node root) {
    for (pugi::xml_attribute a : root.attributes()) {
        const std::string_view space = a.value();
        if (space.find("CIM-schema-cim16#") != std::string_view::npos) return true;
        if (space.ends_with("/CIM100#")) return true;
    }
    return false;
}

/// Documents that define objects come before those that add to them.
int rank(const std::string& profiles) {
    constexpr std::array order = {"EquipmentCore", "CoreEquipment", "EquipmentBoundary", "Equipment", "Topology"};
    const auto found = std::find_if(order.begin(), order.end(),
                                    [&](const char* part) { return profiles.find(part) != std::string::npos; });
    return static_cast<int>(found - order.begin());
}

}  // namespace

std::string_view CimObject::text(std::string_view attribute) const {
    for (auto value = values.rbegin(); value != values.rend(); ++value)
        if (value->first == attribute) return value->second;
    return {};
}

bool CimObject::flag(std::string_view attribute, bool otherwise) const {
    const std::string_view value = text(attribute);
    return value.empty() ? otherwise : value == "true";
}

CimStore::CimStore(std::vector<CimDocument> documents) {
    for (CimDocument& document : documents) documents_.push_back(load(std::move(document)));
    std::stable_sort(documents_.begin(), documents_.end(),
                     [](const Loaded& a, const Loaded& b) { return rank(a.profiles) < rank(b.profiles); });
    for (std::size_t d = 0; d < documents_.size(); ++d) add(d);
}

CimStore::Loaded CimStore::load(CimDocument document) {
    Loaded loaded{std::move(document), std::make_unique<pugi::xml_document>(), {}};
    const CimDocument& source = loaded.source;
    const auto fail = [&](std::ptrdiff_t offset, const std::string& what) {
        throw ImportError(source.name, lineAt(source.bytes, offset), what);
    };
    const pugi::xml_parse_result result = loaded.xml->load_buffer(source.bytes.data(), source.bytes.size());
    if (!result) fail(result.offset, Text::say("XML 有错：") + result.description());
    const pugi::xml_node root = loaded.xml->document_element();
    if (localName(root.name()) != "RDF" || !isKnownCim(root))
        fail(root.offset_debug(), Text::say("不是 CIM16 或 CIM100 的网络模型"));
    for (pugi::xml_node node : root.children()) {
        if (localName(node.name()) == "DifferenceModel")
            fail(node.offset_debug(), Text::say("是差异模型，只能导入完整模型"));
        if (localName(node.name()) != "FullModel") continue;
        for (pugi::xml_node line : node.children())
            if (localName(line.name()) == "Model.profile") loaded.profiles += std::string(line.child_value()) + "\n";
    }
    return loaded;
}

void CimStore::add(std::size_t document) {
    for (pugi::xml_node node : documents_[document].xml->document_element().children()) {
        if (node.type() != pugi::node_element || localName(node.name()) == "FullModel") continue;
        CimObject& object = objectFor(node, document);
        for (pugi::xml_node value : node.children()) {
            if (value.type() != pugi::node_element) continue;
            const std::string_view reference = attributeByLocalName(value, "resource");
            const std::string_view text = reference.empty() ? std::string_view(value.child_value()) : bare(reference);
            object.values.emplace_back(localName(value.name()), text);
        }
    }
}

CimObject& CimStore::objectFor(pugi::xml_node node, std::size_t document) {
    std::string_view id = attributeByLocalName(node, "ID");
    if (id.empty()) id = attributeByLocalName(node, "about");
    if (id.empty())
        throw ImportError(documents_[document].source.name,
                          lineAt(documents_[document].source.bytes, node.offset_debug()), Text::say("对象没有标识"));
    id = bare(id);
    if (const auto known = byId_.find(id); known != byId_.end()) return *known->second;
    auto object = std::make_unique<CimObject>();
    object->className = localName(node.name()), object->id = id;
    object->document = document, object->offset = node.offset_debug();
    byId_[id] = object.get();
    byClass_[object->className].push_back(object.get());
    objects_.push_back(std::move(object));
    return *objects_.back();
}

const CimObject* CimStore::find(std::string_view id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : found->second;
}

const CimObject* CimStore::follow(const CimObject& from, std::string_view attribute) const {
    const std::string_view id = from.text(attribute);
    return id.empty() ? nullptr : find(id);
}

const std::vector<const CimObject*>& CimStore::all(std::string_view className) const {
    static const std::vector<const CimObject*> none;
    const auto found = byClass_.find(className);
    return found == byClass_.end() ? none : found->second;
}

double CimStore::number(const CimObject& object, std::string_view attribute) const {
    return number(object, attribute, std::nan(""));
}

double CimStore::number(const CimObject& object, std::string_view attribute, double otherwise) const {
    std::string_view text = object.text(attribute);
    if (text.empty()) return otherwise;
    if (text.starts_with("+")) text.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || !std::isfinite(value))
        fail(object, std::string(attribute) + Text::say(" 的值“") + std::string(text) + Text::say("”不是数"));
    return value;
}

bool CimStore::hasProfile(std::string_view part) const {
    return std::any_of(documents_.begin(), documents_.end(),
                       [&](const Loaded& d) { return d.profiles.find(part) != std::string::npos; });
}

void CimStore::fail(const CimObject& object, const std::string& what) const {
    const CimDocument& source = documents_[object.document].source;
    throw ImportError(source.name, lineAt(source.bytes, object.offset),
                      std::string(object.className) + "“" + object.name() + "”：" + what);
}

}  // namespace import
