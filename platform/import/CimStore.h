#pragma once

#include <pugixml.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/import/CimSource.h"
#include "platform/import/Import.h"

namespace import {

/// One object of the exchange with what all its profiles say about it. Attribute names carry their class
/// ("ACLineSegment.r") without a namespace prefix; identifiers and references are bare, without "#", "_" or
/// "urn:uuid:".
struct CimObject {
    std::string_view className, id;
    std::vector<std::pair<std::string_view, std::string_view>> values;
    std::size_t document = 0;
    std::ptrdiff_t offset = 0;

    /// Text or reference of an attribute, the last one told; empty when it is absent.
    [[nodiscard]] std::string_view text(std::string_view attribute) const;
    [[nodiscard]] bool has(std::string_view attribute) const { return !text(attribute).empty(); }
    [[nodiscard]] bool flag(std::string_view attribute, bool otherwise) const;
    [[nodiscard]] std::string name() const { return std::string(text("IdentifiedObject.name")); }
};

/// The objects of all documents of one exchange, merged by identifier.
class CimStore {
  public:
    /// \throws ImportError with file and line when a document is broken XML, is no CIM exchange of the two known
    ///         versions (namespaces CIM16 and CIM100), or is a difference model
    explicit CimStore(std::vector<CimDocument> documents);

    /// \return nullptr when there is no such object
    [[nodiscard]] const CimObject* find(std::string_view id) const;
    /// The object that an attribute refers to; nullptr when it is absent or unknown.
    [[nodiscard]] const CimObject* follow(const CimObject& from, std::string_view attribute) const;
    /// All objects of a class in the order of the documents, equipment first.
    [[nodiscard]] const std::vector<const CimObject*>& all(std::string_view className) const;
    /// A number; NaN when the attribute is absent. \throws ImportError when it is not a finite number
    [[nodiscard]] double number(const CimObject& object, std::string_view attribute) const;
    [[nodiscard]] double number(const CimObject& object, std::string_view attribute, double otherwise) const;
    /// Whether a document of this profile was among them; by a part of its name, e.g. "SteadyStateHypothesis".
    [[nodiscard]] bool hasProfile(std::string_view part) const;
    [[noreturn]] void fail(const CimObject& object, const std::string& what) const;

  private:
    struct Loaded {
        CimDocument source;
        std::unique_ptr<pugi::xml_document> xml;
        std::string profiles;
    };
    static Loaded load(CimDocument document);
    void add(std::size_t document);
    CimObject& objectFor(pugi::xml_node node, std::size_t document);

    std::vector<Loaded> documents_;
    std::vector<std::unique_ptr<CimObject>> objects_;
    std::unordered_map<std::string_view, CimObject*> byId_;
    std::unordered_map<std::string_view, std::vector<const CimObject*>> byClass_;
};

}  // namespace import
