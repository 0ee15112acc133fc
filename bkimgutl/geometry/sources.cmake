list(APPEND bkimgutl_sources
    geometry/Copy.cpp
    geometry/Copy.h
    geometry/Turn.cpp
    geometry/Turn.h
    geometry/Turn_Rows.cpp
    geometry/Turn_Rows.h)
