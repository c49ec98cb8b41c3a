// One value of a small fixed set of numeric kinds (scalars, vectors, colours, matrices) in a buffer
// of 64 bytes with a type tag. It knows each kind's name, size and scalars; what the numbers mean
// is the caller's.

#pragma once

#include <array>

/// A plain value. Fields stand in the documented order; new ones are a 4 by 4 matrix of zeros.
class CKvBasicVariant
{
public:
    /// Vectors, colours and matrices are named after their components: i signed, u unsigned, b
    /// bool, otherwise float. Each bool takes one byte.
    enum EType : int
    {
        TYPE_INVALID = -1,
        TYPE_MATRIX4X4,
        TYPE_MATRIX3X3,
        TYPE_MATRIX2X2,
        TYPE_VECTOR4,
        TYPE_IVECTOR4,
        TYPE_UVECTOR4,
        TYPE_BVECTOR4,
        TYPE_RGBAF,
        TYPE_VECTOR3,
        TYPE_EULERANGLES,
        TYPE_IVECTOR3,
        TYPE_UVECTOR3,
        TYPE_BVECTOR3,
        TYPE_RGBF,
        TYPE_VECTOR2,
        TYPE_IVECTOR2,
        TYPE_UVECTOR2,
        TYPE_BVECTOR2,
        TYPE_FLOAT,
        TYPE_INT,
        TYPE_UINT,
        TYPE_BOOL
    };

    static constexpr int kTypeCount = TYPE_BOOL + 1;
    static constexpr int max_value_byte_size = 64;

    /// A value as it goes in: the plain array of its components. The kind is part of the type, so
    /// that a colour is no vector.
    template <typename TScalar, int kCount, EType kType>
    struct TValue
    {
        TScalar components[kCount];
    };

    using BasicMat4x4 = TValue<float, 16, TYPE_MATRIX4X4>;
    using BasicMat3x3 = TValue<float, 9, TYPE_MATRIX3X3>;
    using BasicMat2x2 = TValue<float, 4, TYPE_MATRIX2X2>;
    using BasicFloat4 = TValue<float, 4, TYPE_VECTOR4>;
    using BasicInt4 = TValue<int, 4, TYPE_IVECTOR4>;
    using BasicUint4 = TValue<unsigned int, 4, TYPE_UVECTOR4>;
    using BasicBool4 = TValue<bool, 4, TYPE_BVECTOR4>;
    using BasicRGBAf = TValue<float, 4, TYPE_RGBAF>;
    using BasicFloat3 = TValue<float, 3, TYPE_VECTOR3>;
    using BasicEulerAngles = TValue<float, 3, TYPE_EULERANGLES>;
    using BasicInt3 = TValue<int, 3, TYPE_IVECTOR3>;
    using BasicUint3 = TValue<unsigned int, 3, TYPE_UVECTOR3>;
    using BasicBool3 = TValue<bool, 3, TYPE_BVECTOR3>;
    using BasicRGBf = TValue<float, 3, TYPE_RGBF>;
    using BasicFloat2 = TValue<float, 2, TYPE_VECTOR2>;
    using BasicInt2 = TValue<int, 2, TYPE_IVECTOR2>;
    using BasicUint2 = TValue<unsigned int, 2, TYPE_UVECTOR2>;
    using BasicBool2 = TValue<bool, 2, TYPE_BVECTOR2>;

    // What is known of the kinds, by their numbers: the name, the size in bytes, and which of the
    // four scalar kinds the components are.
    static const std::array<const char*, kTypeCount> TypeName;
    static const std::array<int, kTypeCount> TypeSize;
    static const std::array<EType, kTypeCount> TypeComponentScalarType;

    static constexpr bool IsValidEType(EType type)
    {
        return static_cast<unsigned int>(type) < static_cast<unsigned int>(kTypeCount);
    }

    // For valid kinds. Any other asserts; a release build gives 0, "" and TYPE_INVALID.
    static int GetETypeByteSize(EType type);
    static const char* GetETypeName(EType type);
    static EType GetETypeComponentScalarType(EType type);
    static int GetETypeNumComponents(EType type);

    /// The kind of exactly this name, letter case included; TYPE_INVALID when there is none.
    static EType GetETypeEnumFromName(const char* name);

    EType GetEType() const { return m_type; }

    /// The size in bytes of the current kind.
    int ByteSize() const { return GetETypeByteSize(m_type); }

    const void* GetConstDataPtr() const { return m_data; }
    void* GetMutableDataPtr() { return m_data; }

    /// Takes over value and kind. Bytes beyond the value's size stay as they were.
    template <typename TScalar, int kCount, EType kType>
    void SetValue(const TValue<TScalar, kCount, kType>& value)
    {
        SetValueFromMemory(value.components, kType);
    }
    void SetValue(float value) { SetValueFromMemory(&value, TYPE_FLOAT); }
    void SetValue(int value) { SetValueFromMemory(&value, TYPE_INT); }
    void SetValue(unsigned int value) { SetValueFromMemory(&value, TYPE_UINT); }
    void SetValue(bool value) { SetValueFromMemory(&value, TYPE_BOOL); }
    void SetValue(const void* pointer) = delete;  // would otherwise count as a bool

    /// The same with as many bytes as the kind has.
    ///
    /// Errors: a kind that is not valid asserts; a release build changes nothing.
    void SetValueFromMemory(const void* bytes, EType type);

    /// Copies ByteSize() bytes out.
    void MemoryCopyTo(void* destination) const;

private:
    EType m_type = TYPE_MATRIX4X4;
    unsigned char m_data[max_value_byte_size] = {};
};
