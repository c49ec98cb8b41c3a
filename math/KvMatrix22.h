// CKvMatrix22: 4 floats row by row, a plain value of 16 bytes.

#pragma once

#include <type_traits>

#include "math/KvSquareMatrix.h"

struct CKvMatrix22 : TKvSquareMatrix<2>
{
    using TKvSquareMatrix::TKvSquareMatrix;
};

static_assert(sizeof(CKvMatrix22) == 16 && std::is_trivial_v<CKvMatrix22> &&
              std::is_standard_layout_v<CKvMatrix22>);
