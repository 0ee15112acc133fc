list(APPEND bkimgutl_sources
    filter/Blur.cpp
    filter/Blur.h
    filter/Component_Filter.cpp
    filter/Component_Filter.h
    filter/Difference_Row.cpp
    filter/Difference_Row.h
    filter/Gaussian.cpp
    filter/Gaussian.h
    filter/Resample_Rows.cpp
    filter/Resample_Rows.h
    filter/Scale.cpp
    filter/Scale.h
    filter/Scratch.h
    filter/Strip_Passes.cpp
    filter/Strip_Passes.h
    filter/Weight_Bank.cpp
    filter/Weight_Bank.h)
