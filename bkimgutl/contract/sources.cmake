list(APPEND bkimgutl_sources
    contract/Creating.h
    contract/Creation.cpp
    contract/Creation.h
    contract/Files.h
    contract/Guard.h
    contract/Histogram.cpp
    contract/Histogram.h
    contract/Load_Ahead.h
    contract/Opened_Picture.h
    contract/Scale.cpp
    contract/Text_Buffer.cpp
    contract/Text_Buffer.h
    contract/Tone.cpp
    contract/Tone.h
    contract/Types.h
    contract/Window_System.cpp
    contract/Window_System.h)
