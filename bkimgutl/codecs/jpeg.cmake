list(APPEND bkimgutl_sources
    codecs/Codec.cpp
    codecs/EXIF_Block.cpp
    codecs/EXIF_Block.h)
