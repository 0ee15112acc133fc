list(APPEND bkimgutl_sources
    geometry/Copy.cpp
    geometry/Copy.h
    geometry/Cubic_Row.cpp
    geometry/Cubic_Row.h
    geometry/Cubic_Table.cpp
    geometry/Cubic_Table.h
    geometry/Distort.cpp
    geometry/Distort.h
    geometry/Rotate.cpp
    geometry/Rotate.h
    geometry/Rotation_Map.cpp
    geometry/Rotation_Map.h
    geometry/Turn.cpp
    geometry/Turn.h
    geometry/Turn_Rows.cpp
    geometry/Turn_Rows.h)
