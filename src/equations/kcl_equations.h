#pragma once
// The Kirchhoff's-current-law equation of every unknown: as first written, with its
// terms collected, and as a row of the augmented matrix.

#include "document/workspace.h"

#include <string>

namespace ampora {

// First-written form of an ordinary node, such as "(Va-Vb)/10 + (Va-Vc+2)/5 - 0.5 = 0".
std::string EqnSet1Normal(const Workspace& ws, int position);
// The same over every member of a supernode, leaving out the currents inside it.
std::string EqnSet1Super(const Workspace& ws, int superNode);

// Collected form of equation `row`, such as "(1/10+1/5)*Va-(1/10)*Vb-(1/5)*Vc=-2/5+0.5".
std::string EqnSet2Normal(const Workspace& ws, int row, int position);
std::string EqnSet2Super(const Workspace& ws, int row, int superNode);

// Fill row `row` of the matrix with the numbers of the collected equation.
void LoadMatrixNormal(const Workspace& ws, AugmentedMatrix& matrix, int row, int position);
void LoadMatrixSuper(const Workspace& ws, AugmentedMatrix& matrix, int row, int superNode);

// Zeroes the whole matrix, then writes every first-written equation and its matrix row.
void EqnSet1(Workspace& ws);
// Writes every collected equation.
void EqnSet2(Workspace& ws);

} // namespace ampora
