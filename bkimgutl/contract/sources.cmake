list(APPEND bkimgutl_sources
    contract/Creation.cpp
    contract/Creation.h
    contract/Files.h
    contract/Histogram.cpp
    contract/Histogram.h
    contract/Tone.h
    contract/Types.h)
