// What of a frame is taken, and what a label would cover there.
#pragma once

#include <optional>
#include <vector>

#include "plan/paper.hpp"

namespace kavo_app {

class PaperRoom {
 public:
  explicit PaperRoom(const PaperBox& frame);

  /// Takes a box: nothing else may lie there.
  void Block(const PaperBox& box);
  /// Takes the place of a symbol; labels of others keep off farther than its own.
  void BlockSymbol(PaperSpot at, double halfSize);
  /// Marks a line, which is covered only where there is no better room.
  void Avoid(PaperSpot from, PaperSpot to);
  /// Draws a leader, which is a line that no other leader crosses.
  void AddLeader(PaperSpot from, PaperSpot to);

  /// How many millimetres of lines a box would cover; none where it is beyond the frame, on what
  /// is taken, or too near a symbol that it does not belong to.
  /// @param anchor  where the symbol stands that it belongs to, if it belongs to one.
  std::optional<double> CostOf(const PaperBox& box, PaperSpot anchor) const;
  /// Notes that no room was found for what is there.
  void AddMiss(PaperSpot spot);
  /// True where so many have found no room that looking for it again is a waste.
  bool IsFull(PaperSpot spot) const;
  /// True when a leader can be drawn: it may leave the symbol that it begins at, and others on the
  /// same spot, but crosses no other symbol or label, and no leader.
  bool HasWayFor(PaperSpot from, PaperSpot to) const;

 private:
  struct Symbol {
    PaperSpot at;
    PaperBox clear;  // where only its own label may lie
  };
  struct Cell {
    std::vector<PaperBox> blocked;
    std::vector<PaperBox> avoided;
    std::vector<Symbol> symbols;
    int misses = 0;
  };
  struct Leader {
    PaperSpot from;
    PaperSpot to;
  };
  template <class Visitor>
  bool AnyNear(const PaperBox& box, Visitor visitor) const;
  template <class Visitor>
  void ForNear(const PaperBox& box, Visitor visitor);
  bool IsTaken(const PaperBox& box, PaperSpot anchor) const;
  bool IsBlocked(PaperSpot spot, PaperSpot from) const;

  PaperBox frame_;
  std::size_t columns_;
  std::size_t rows_;
  std::vector<Cell> cells_;  // a grid over the frame, row by row
  std::vector<Leader> leaders_;
};

}  // namespace kavo_app
