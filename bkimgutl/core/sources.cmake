list(APPEND bkimgutl_sources
    core/Bitmap.h
    core/Bitmap_View.h
    core/Color.h
    core/Handle_Table.h
    core/Last_Error.h
    core/Pixel_Memory.h
    core/Pixel_Origin.h
    core/Row_Loop.h)
