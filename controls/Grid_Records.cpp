#include "controls/Grid_Records.h"

Grid_Data_Type Data_Type_Of(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr: return Grid_Data_Type::Null;
    case QMetaType::Bool: return Grid_Data_Type::Boolean;
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar: return Grid_Data_Type::Byte;
    case QMetaType::Short:
    case QMetaType::UShort: return Grid_Data_Type::Integer;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong: return Grid_Data_Type::Long;
    case QMetaType::Float: return Grid_Data_Type::Single;
    case QMetaType::Double: return Grid_Data_Type::Double;
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime: return Grid_Data_Type::Date;
    default: return Grid_Data_Type::String;
    }
}
