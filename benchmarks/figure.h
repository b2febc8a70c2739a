#pragma once

#include <QString>
#include <functional>
#include <vector>

/// One measured figure and the bar it must clear.
struct Figure {
  enum Sense { AtMost, AtLeast };

  QString name;
  QString what;
  double value = 0;
  double bar = 0;
  Sense sense = AtMost;
  QString note;  // raw times and what else a reader wants to know

  bool Holds() const { return sense == AtMost ? value <= bar : value >= bar; }
};

using Figures = std::vector<Figure>;

/// Milliseconds of wall time that `work` takes.
double TimeMs(const std::function<void()>& work);
/// The same without the time for which the calling thread was ready to run and had no processor: what `work` holds the
/// thread for, whatever else runs on the machine. What it waits for itself, a lock or a file, counts.
double HeldMs(const std::function<void()>& work);

/// What two sides took, in milliseconds.
struct Sides {
  double ours = 0;
  double plain = 0;
  double Ratio() const { return ours / plain; }
  QString Note() const;
};
/// Runs both sides `rounds` times by turns and gives the shortest time of each: the machine's noise only ever adds.
/// Each side returns the milliseconds it measured.
Sides MeasureByTurns(int rounds, const std::function<double()>& ours, const std::function<double()>& plain);
/// Likewise, and gives the round with the median ratio: for many short rounds, in which a machine whose speed changes
/// may run one side alone at its best.
Sides MeasureManyByTurns(int rounds, const std::function<double()>& ours, const std::function<double()>& plain);
