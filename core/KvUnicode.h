// Conversions between UTF-8, ASCII and UCS-2. A wide text holds one 16-bit unit in each wchar_t,
// also where wchar_t is wider.

#pragma once

/// Decodes UTF-8 of up to three bytes a character (RFC 3629 without its four-byte form) into units.
/// No terminator is written. Bytes behind a lead byte are taken as continuation bytes whatever
/// their value, and a continuation byte without a lead byte as the lead of a two-byte character.
///
/// Units:  gives the units produced; \a maxUnits is their largest number, -1 for no limit. A null
///         \a dst only counts.
/// Errors: the decoding ends before a four-byte character and before one that the text's end cuts.
///         0 for null and the empty text.
int kvDecodeUTF8ToUCS2(const char* src, wchar_t* dst, int maxUnits);

/// Encodes units as UTF-8 of one to three bytes each. No terminator is written. Only a unit's low
/// 16 bits count; a surrogate is encoded like any other unit.
///
/// Units:  gives the bytes produced; \a maxBytes is their largest number, -1 for no limit. A null
///         \a dst only counts.
/// Errors: the encoding ends before the first unit that does not fit whole; 0 for null and the
///         empty text.
int kvEncodeUCS2ToUTF8(const wchar_t* src, char* dst, int maxBytes);

/// Widens each byte (0x00 to 0xFF) to one unit and writes a terminator behind the last one.
///
/// Units: \a dst has room for the units and the terminator; \a maxUnits is the largest number of
///        units without it, -1 for no limit.
void kvConvertASCIIToUCS2(const char* src, wchar_t* dst, int maxUnits);
