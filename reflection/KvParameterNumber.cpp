#include "reflection/KvParameterNumber.h"

#include "core/KvNumberText.h"

void CKvParameterInt::GetValueAsText(char* buffer, int size) const
{
    char text[12];
    kvIntToString(GetValue(), text);
    WriteText(text, buffer, size);
}

void CKvParameterFloat::GetValueAsText(char* buffer, int size) const
{
    char text[48];
    kvFloatToString(GetValue(), text);
    WriteText(text, buffer, size);
}
