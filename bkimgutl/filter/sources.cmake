list(APPEND bkimgutl_sources
    filter/Resample_Rows.cpp
    filter/Resample_Rows.h
    filter/Scale.cpp
    filter/Scale.h
    filter/Scratch.h
    filter/Strip_Passes.cpp
    filter/Strip_Passes.h
    filter/Weight_Bank.cpp
    filter/Weight_Bank.h)
