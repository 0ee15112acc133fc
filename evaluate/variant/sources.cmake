list(APPEND hv_evaluate_sources
    variant/Conversions.h
    variant/Dates.h
    variant/Evaluate_Error.h
    variant/Like.h
    variant/Operators.h
    variant/Variant.h
    variant/Variant_Array.h)
