// Conjugate gradients preconditioned by an incomplete Cholesky factorization without fill-in.
#pragma once

#include "model/model.h"

namespace quillane {

/// Solves K u = f of n equations. The upper store holds for row i the entries right of the diagonal
/// in ascending column order (slots 1..upperCount(i), columns of 1..n), diagonalValue the diagonal,
/// load the right-hand side (N). solution holds the start vector on entry and the displacements
/// (mm) on return. The other arrays are work space, overwritten. Stops when the residual's norm is
/// at most tolerance times that of load, or after n + 10 iterations. Throws RunTimeError: floating
/// point if a step size or norm is not finite (no load on an equation, no equation), subscript for
/// a row of more than `capacity` entries or a column outside 1..n.
/// Source: J. A. Meijerink, H. A. van der Vorst, Mathematics of Computation 31 (1977) 148-162.
SolveReport SolveEquations(Integer n, Integer capacity, Array1<Integer>& upperCount,
                           Array1<Integer>& lowerCount, Array2<Integer>& upperColumn,
                           Array2<Integer>& lowerColumn, Array2<Double>& upperValue,
                           Array2<Double>& lowerValue, Array1<Double>& diagonalValue,
                           Array1<Double>& load, double tolerance, Array1<Double>& solution,
                           Array2<Double>& factorUpper, Array2<Double>& factorLower,
                           Array1<Double>& factorInvDiag, Array1<Double>& residual,
                           Array1<Double>& direction, Array1<Double>& precond,
                           Array1<Double>& product, Array1<Integer>& transposeFill);

/// Transposes a triangular row store: entry (i, j) of the input becomes entry (j, i) of the output.
/// All slots of the output are cleared first; its rows list their columns in ascending order. fill
/// is work space of 0..n counters. Throws RunTimeError (subscript) as SolveEquations.
void TransposeRows(Integer n, Integer capacity, const Array1<Integer>& countIn,
                   Array1<Integer>& countOut, const Array2<Integer>& columnIn,
                   Array2<Integer>& columnOut, const Array2<Double>& valueIn,
                   Array2<Double>& valueOut, Array1<Integer>& fill);

/// Factorizes K = (D + L) D^-1 (D + L)^T on the pattern of the lower store: factorLower holds L,
/// factorInvDiag the reciprocal pivots. A pivot of at most tolerance in size is replaced by it.
/// Throws RunTimeError: floating point for a pivot that is not finite, subscript as SolveEquations.
void IncompleteCholesky(Integer n, Integer capacity, const Array1<Integer>& lowerCount,
                        const Array2<Integer>& lowerColumn, const Array2<Double>& lowerValue,
                        const Array1<Double>& diagonalValue, Array2<Double>& factorLower,
                        Array1<Double>& factorInvDiag, double tolerance);

/// Runs the iteration; arguments as SolveEquations. transposeFill is deliberately unused.
SolveReport PreconditionedCG(Integer n, Integer capacity, const Array1<Integer>& upperCount,
                             const Array1<Integer>& lowerCount, const Array2<Integer>& upperColumn,
                             const Array2<Integer>& lowerColumn, const Array2<Double>& upperValue,
                             const Array2<Double>& lowerValue, const Array1<Double>& diagonalValue,
                             const Array1<Double>& load, double tolerance, Array1<Double>& solution,
                             const Array2<Double>& factorUpper, const Array2<Double>& factorLower,
                             const Array1<Double>& factorInvDiag, Array1<Double>& residual,
                             Array1<Double>& direction, Array1<Double>& precond,
                             Array1<Double>& product, Array1<Integer>& transposeFill);

/// Computes y = K x; every row sums lower entries, diagonal, upper entries, in this order.
void MatrixVectorProduct(Integer n, Integer capacity, const Array1<Integer>& upperCount,
                         const Array1<Integer>& lowerCount, const Array2<Integer>& upperColumn,
                         const Array2<Integer>& lowerColumn, const Array2<Double>& upperValue,
                         const Array2<Double>& lowerValue, const Array1<Double>& diagonalValue,
                         const Array1<Double>& x, Array1<Double>& y);

/// Computes z = M^-1 r by a forward and a backward sweep over the factor. A row adds its terms in
/// the order in which the sweep computes their z: columns ascending forward, descending backward.
void ApplyPreconditioner(Integer n, Integer capacity, const Array1<Integer>& upperCount,
                         const Array1<Integer>& lowerCount, const Array2<Integer>& upperColumn,
                         const Array2<Integer>& lowerColumn, const Array2<Double>& factorUpper,
                         const Array2<Double>& factorLower, const Array1<Double>& factorInvDiag,
                         const Array1<Double>& r, Array1<Double>& z);

}  // namespace quillane
