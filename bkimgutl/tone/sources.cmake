list(APPEND bkimgutl_sources
    tone/Byte_Table-inl.h
    tone/Clip_Table.cpp
    tone/Clip_Table.h
    tone/Color_Mix.cpp
    tone/Color_Mix.h
    tone/Component_Row.cpp
    tone/Component_Row.h
    tone/Histogram.cpp
    tone/Histogram.h
    tone/Map_Row.cpp
    tone/Map_Row.h
    tone/Sample.cpp
    tone/Sample.h
    tone/Table_Map.cpp
    tone/Table_Map.h)
