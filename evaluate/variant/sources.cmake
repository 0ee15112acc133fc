list(APPEND hv_evaluate_sources
    variant/Arithmetic.cpp
    variant/Comparison.cpp
    variant/Conversions.cpp
    variant/Conversions.h
    variant/Date_Reader.cpp
    variant/Dates.cpp
    variant/Dates.h
    variant/Evaluate_Error.h
    variant/Like.cpp
    variant/Like.h
    variant/Logic.cpp
    variant/Number_Reader.cpp
    variant/Operators.h
    variant/Variant.cpp
    variant/Variant.h
    variant/Variant_Array.cpp
    variant/Variant_Array.h)
