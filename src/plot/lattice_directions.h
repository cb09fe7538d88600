#pragma once
// The four directions of the plot lattice for a grid orientation. The row
// direction ("east") is always the lattice direction nearest compass east, so
// rows run roughly west to east whatever the orientation.
namespace tarnwick {

struct LatticeDirections {
  double east = 90;
  double north = 0;
  double west = 270;
  double south = 180;
};

// Brings orientation into [0, 360) in place and derives the four azimuths.
LatticeDirections ReturnLatticeDirections(double& orientation);

}  // namespace tarnwick
