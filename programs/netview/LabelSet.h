#pragma once

#include <QHash>
#include <QString>
#include <vector>

#include "platform/rtdb/CaseRecords.h"
#include "programs/frame/Location.h"

class dbDatabase;

/// The labels that the module wants on the diagram, one for each place.
class LabelSet {
  public:
    static constexpr int module = 14;  ///< number of this module among the owners of labels
    static constexpr int live = 0x02;  ///< bit of the flags: the host draws the label

    /// The first text at a place counts. A text is cut to what a record holds.
    void add(const Location& at, int rType, const QString& text);
    void addVirtual(const Location& at, const QString& text);

    /// Makes exactly these labels live in `addition_graph`, without committing. A record that is there keeps its text,
    /// unless the texts are to be written anew; those that are not wanted stay in the table without the live bit.
    bool store(dbDatabase& realTime, bool anew) const;

  private:
    void place(norvdb::addition_graph label, const Location& at, const QString& text);

    std::vector<norvdb::addition_graph> labels_;
    QHash<QString, std::size_t> byPlace_;
};
