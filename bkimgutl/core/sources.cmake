list(APPEND bkimgutl_sources
    core/Background_Color.cpp
    core/Background_Color.h
    core/Bitmap.cpp
    core/Bitmap.h
    core/Bitmap_View.h
    core/Color.cpp
    core/Color.h
    core/Handle_Table.cpp
    core/Handle_Table.h
    core/Last_Error.cpp
    core/Last_Error.h
    core/Pixel_Memory.cpp
    core/Pixel_Memory.h
    core/Pixel_Origin.cpp
    core/Pixel_Origin.h
    core/Row_Loop.h
    core/Vector_Blocks-inl.h)
