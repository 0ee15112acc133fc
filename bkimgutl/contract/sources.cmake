list(APPEND bkimgutl_sources
    contract/Creating.h
    contract/Creation.h
    contract/Files.h
    contract/Histogram.h
    contract/Scale.cpp
    contract/Tone.cpp
    contract/Tone.h
    contract/Types.h)
