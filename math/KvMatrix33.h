// CKvMatrix33: 9 floats row by row, a plain value of 36 bytes.

#pragma once

#include <type_traits>

#include "math/KvSquareMatrix.h"

struct CKvMatrix33 : TKvSquareMatrix<3>
{
    using TKvSquareMatrix::TKvSquareMatrix;
};

static_assert(sizeof(CKvMatrix33) == 36 && std::is_trivial_v<CKvMatrix33> &&
              std::is_standard_layout_v<CKvMatrix33>);
