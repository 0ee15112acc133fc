list(APPEND bkimgutl_sources
    contract/Creation.h
    contract/Files.h
    contract/Histogram.h
    contract/Tone.h
    contract/Types.h)
