#include "platform/host/diagram/Labels.h"
#include "platform/rtdb/Records.h"
#include "platform/rtdb/dbCursor.h"

namespace diagram {

namespace {

/// What the case says about one kind of element; what it does not hold is out of service.
class States {
  public:
    States(dbDatabase& realTime, const FigureIndex& figures, Drawing& drawing)
        : realTime_(realTime), figures_(figures), drawing_(drawing), known_(drawing.figures.size()) {}

    void read() {
        dbCursor<norvdb::nd> nodes(realTime_);
        if (nodes.select() == 0) return;
        rows<norvdb::ln>(Kind::Line, 3, [](Figure& f, const norvdb::ln& r) {
            f.off = r.valid != 1, f.openAtI = r.i_break == 0, f.openAtJ = r.j_break == 0;
        });
        rows<norvdb::xf>(Kind::Transformer2, 3, [](Figure& f, const norvdb::xf& r) { f.off = r.valid != 1; });
        rows<norvdb::xf>(Kind::Transformer3, 4, [](Figure& f, const norvdb::xf& r) { f.off = r.valid != 1; });
        rows<norvdb::un>(Kind::Generator, 0, [](Figure& f, const norvdb::un& r) { f.off = r.valid != 1; });
        rows<norvdb::cp>(Kind::Shunt, 0, [](Figure& f, const norvdb::cp& r) { f.off = r.valid != 1; });
        rows<norvdb::ld>(Kind::Load, 0, [](Figure& f, const norvdb::ld& r) { f.off = r.valid != 1; });
        switches();
        leaveOut();
    }

  private:
    /// \param suffix  length of what the real-time id has behind the name
    template <class Record, class Take>
    void rows(Kind kind, int suffix, Take take) {
        dbCursor<Record> cursor(realTime_);
        cursor.select();
        while (cursor.next()) {
            const int f = figures_.at(kind, cursor->id.chopped(std::min<qsizetype>(suffix, cursor->id.size())));
            if (f < 0) continue;
            take(drawing_.figures[f], *cursor.get());
            known_[f] = true;
        }
    }

    void switches() {
        constexpr int breaker = 0x01;
        dbCursor<norvdb::cb> cursor(realTime_);
        cursor.select();
        while (cursor.next()) {
            const int f = figures_.at(Kind::Switch, cursor->id.chopped(cursor->flags & breaker ? 4 : 3));
            if (f >= 0) drawing_.figures[f].open = cursor->closed == 0;
        }
    }

    void leaveOut() {
        for (std::size_t f = 0; f < known_.size(); ++f) {
            const Kind kind = drawing_.figures[f].kind;
            if (kind != Kind::Bar && kind != Kind::Point && kind != Kind::Switch && !known_[f])
                drawing_.figures[f].off = true;
        }
    }

    dbDatabase& realTime_;
    const FigureIndex& figures_;
    Drawing& drawing_;
    std::vector<bool> known_;
};

}  // namespace

void readStates(dbDatabase& realTime, const FigureIndex& figures, Drawing& drawing) {
    States(realTime, figures, drawing).read();
}

}  // namespace diagram
