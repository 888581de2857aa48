#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "engines/faults/Places.h"
#include "engines/network/SequenceNetwork.h"

/// The ports of a set of conditions as one sequence network sees them. Inside a branch no bus is added: with i the
/// currents of the coupled branches, M the impedance between the way to a port and whole branches, Y the inverse of the
/// primitive impedance, theory (9) and (10),
///     i   = Y (V_from - V_to - sum_t M_t i_t - sum_j u_j)
///     V_s = V_ref - M_s' i - sum_t K_st i_t - sum_j f_sj u_j
/// where shunt t draws i_t, u_j is the voltage across open j, K_st the impedance that the ways to s and t share and
/// f_sj is +-1 when open j lies on the way to s. The way to a port starts at an end of its branch (ref); a piece that
/// opens cut off at both sides floats at an unknown voltage. In a transformer all this is on the J side of its turns
/// ratio; what a port tells and takes is per unit of the nearer end.
namespace engines {

class SequencePorts {
  public:
    /// \param whole  the network of the mode; branches with cuts are taken out of it here
    SequencePorts(const Network& network, const SequenceNetwork& whole, std::shared_ptr<const Places> places);

    [[nodiscard]] int size() const { return static_cast<int>(views_.size()); }
    [[nodiscard]] const SequenceNetwork& network() const { return *net_; }
    /// Theory (11). Voltage at a shunt, or current through an open, before anything happens there.
    [[nodiscard]] Complex prefault(int port) const;
    /// The same, caused by a unit of the unknown of another port: current into a shunt, voltage across an open.
    [[nodiscard]] const Matrix& response() const { return response_; }
    /// Unknown common voltages: their number, and the one at which a port floats, -1 none. The shunt currents of the
    /// ports at one of them add up to zero.
    [[nodiscard]] int floats() const { return static_cast<int>(floats_.size()); }
    [[nodiscard]] int floatOf(int port) const { return views_[static_cast<std::size_t>(port)].floating; }
    /// What a port sees with, and what a unit of its unknown injects.
    [[nodiscard]] const HalfColumn& half(int port) const { return views_[static_cast<std::size_t>(port)].half; }
    [[nodiscard]] const Injection& injection(int port) const {
        return views_[static_cast<std::size_t>(port)].injection;
    }
    /// No path from the port to a shunt element of the network.
    [[nodiscard]] bool deadAt(int port) const;

  private:
    friend class SequenceField;
    enum class Ref { Bus, Ground, Floating };
    struct View {
        Ref ref = Ref::Floating;
        int refBus = -1;
        double sign = 1;   // of the way: +1 from I towards J
        double scale = 1;  // of the unknown and the counterpart, from the J side of a turns ratio to the nearer end
        Stretch way{0, 0};
        int floating = -1;             // place in floats_
        int own = -1;                  // place of the branch in its coupled set
        bool conducts = false;         // open: carries the branch's own current
        ComplexVector drop, admitted;  // M_s and Y M_s over the coupled set
        BusWeights weights;
        HalfColumn half;      // of the weights
        Injection injection;  // of a unit of the unknown's weights
    };
    void takeOut(const SequenceNetwork& whole);
    View viewOf(const Port& port);
    void viewInBranch(const Port& port, View& view) const;
    void viewInTransformer(const Port& port, View& view) const;
    void viewAtBus(int bus, double sign, View& view) const;
    void weigh(const Port& port, View& view) const;
    [[nodiscard]] bool through(int branch) const;
    [[nodiscard]] int pieceOf(const Port& port) const;
    [[nodiscard]] double onWay(int shunt, int open) const;
    [[nodiscard]] Complex local(int j, int l) const;
    [[nodiscard]] Complex localShunts(int s, int t) const;
    void respond();
    [[nodiscard]] Complex respond(int j, int l) const;

    const Network* grid_;
    std::shared_ptr<const SequenceNetwork> whole_, net_;
    std::shared_ptr<const Places> places_;
    std::vector<View> views_;
    std::vector<std::pair<int, int>> floats_;  // (-1, island) or (branch, piece)
    std::map<int, Matrix> admittances_;        // by the first branch of the coupled set
    Matrix response_;
};

/// Voltages and currents of one sequence with the unknowns of its ports known.
class SequenceField {
  public:
    /// \param values   per port; \param floats  per floating voltage
    SequenceField(std::shared_ptr<const SequencePorts> ports, ComplexVector values, ComplexVector floats,
                  bool withPrefault);
    [[nodiscard]] Complex voltage(int bus) const;
    [[nodiscard]] Complex current(int branch, End end) const;
    /// Value of the unknown of a port, and of its counterpart.
    [[nodiscard]] Complex value(int port) const { return values_[static_cast<std::size_t>(port)]; }
    [[nodiscard]] Complex counterpart(int port) const;
    [[nodiscard]] const SequencePorts& ports() const { return *ports_; }
    /// Voltages of all buses that the unknowns of the ports drive, without those before the fault.
    [[nodiscard]] ComplexVector components() const;
    /// Adds to components: the voltages before the fault where currents flow then.
    void addLoad(ComplexVector& components) const;
    /// Makes voltages of them: at a flat start 1.0, and common voltages of floating islands.
    void addCommon(ComplexVector& components) const;

  private:
    [[nodiscard]] bool loaded() const;
    [[nodiscard]] Complex component(const HalfColumn& by) const;
    [[nodiscard]] Complex drop(int branch) const;
    [[nodiscard]] Complex floating(int bus) const;
    [[nodiscard]] Complex ownCurrent(int branch) const;

    std::shared_ptr<const SequencePorts> ports_;
    ComplexVector values_, floats_;
    bool withPrefault_;
    std::vector<std::pair<const DrivenColumn*, Complex>> injections_;
};

}  // namespace engines
