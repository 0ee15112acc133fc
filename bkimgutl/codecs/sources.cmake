include(${CMAKE_CURRENT_LIST_DIR}/jpeg.cmake OPTIONAL)
include(${CMAKE_CURRENT_LIST_DIR}/tiff.cmake OPTIONAL)
list(APPEND bkimgutl_sources codecs/Codec.h codecs/Image_Resources.cpp codecs/Image_Resources.h codecs/XMP_Thumbnails.cpp
    codecs/XMP_Thumbnails.h)
