// Determinant and inverse of CKvMatrix44, by the 2 x 2 determinants of its upper and its lower half
// (Laplace expansion by complementary minors).
//
// All is computed in double precision, in which a product of four floats neither overflows nor
// underflows, a product of two is exact, and each 2 x 2 determinant therefore rounded just once.

#include <array>
#include <cmath>

#include "math/KvMatrix44.h"

namespace {

/// The pairs of columns, each beside its complement: pair i and pair 5 - i are all four columns.
constexpr std::array<std::array<int, 2>, 6> kPairs = {
    {{0, 1}, {0, 2}, {0, 3}, {1, 2}, {1, 3}, {2, 3}}};

/// The sign of each pair in the expansion: that of the permutation of pair and complement.
constexpr std::array<double, 6> kSigns = {1, -1, 1, 1, -1, 1};

struct CMinors
{
    std::array<double, 6> upper;  ///< of rows 0 and 1, in the columns of each pair
    std::array<double, 6> lower;  ///< of rows 2 and 3
    double determinant = 0;
    double magnitude = 0;  ///< the sum of the sizes of the determinant's terms
};

CMinors GetMinors(const CKvMatrix44& m)
{
    const auto minor = [&m](int row, const std::array<int, 2>& pair) {
        return double{m(row, pair[0])} * double{m(row + 1, pair[1])} -
               double{m(row, pair[1])} * double{m(row + 1, pair[0])};
    };
    CMinors minors;
    for (std::size_t i = 0; i < 6; ++i) {
        minors.upper[i] = minor(0, kPairs[i]);
        minors.lower[i] = minor(2, kPairs[i]);
    }
    for (std::size_t i = 0; i < 6; ++i) {
        const double term = minors.upper[i] * minors.lower[5 - i];
        minors.determinant += kSigns[i] * term;
        minors.magnitude += std::abs(term);
    }
    return minors;
}

/// The place in kPairs of two different columns, the smaller one first.
constexpr std::size_t PairOf(int first, int second)
{
    return static_cast<std::size_t>(first == 0 ? second - 1 : first + second);
}

/// The determinant without this row and column, with its sign: along the row's neighbour in the
/// same half, times the minors of the other half.
double Cofactor(const CKvMatrix44& m, const CMinors& minors, int row, int column)
{
    const std::array<double, 6>& half = row < 2 ? minors.lower : minors.upper;
    const int neighbour = row ^ 1;
    const int first = column == 0 ? 1 : 0;
    const int second = column <= 1 ? 2 : 1;
    const int third = column <= 2 ? 3 : 2;
    const double cofactor = double{m(neighbour, first)} * half[PairOf(second, third)] -
                            double{m(neighbour, second)} * half[PairOf(first, third)] +
                            double{m(neighbour, third)} * half[PairOf(first, second)];
    return (row + column) % 2 == 0 ? cofactor : -cofactor;
}

/// The most that rounding can add to the determinant, by the sizes of its terms: three roundings in
/// each and five in their sum, of 2^-53 each.
constexpr double kRoundingBound = 0x1p-50;

}  // namespace

float CKvMatrix44::GetDeterminant() const
{
    return static_cast<float>(GetMinors(*this).determinant);
}

bool CKvMatrix44::getInverseGeneric(CKvMatrix44& inverse) const
{
    const CMinors minors = GetMinors(*this);
    // Written so that NaN counts as no determinant either.
    if (!(std::abs(minors.determinant) > minors.magnitude * kRoundingBound))
        return false;

    CKvMatrix44 result;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            const double cofactor = Cofactor(*this, minors, column, row);
            result(row, column) = static_cast<float>(cofactor / minors.determinant);
            if (!std::isfinite(result(row, column)))
                return false;
        }
    }
    inverse = result;
    return true;
}

CKvMatrix44 CKvMatrix44::getInverseGeneric() const
{
    CKvMatrix44 inverse(1);
    static_cast<void>(getInverseGeneric(inverse));
    return inverse;
}
