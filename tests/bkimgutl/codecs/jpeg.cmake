hv_test(NAME bkimgutl_jpeg_test LAYER plain
    SOURCES
        EXIF_Block_Test.cpp
        Image_Resources_Test.cpp
        Jpeg_Damage_Test.cpp
        Jpeg_Fixture.cpp
        Jpeg_Fixture.h
        Jpeg_Lossless_Test.cpp
        Jpeg_Load_Test.cpp
        Jpeg_Save_Test.cpp
        Jpeg_Shapes_Test.cpp
        Jpeg_Texts_Test.cpp
        Jpeg_XMP_Test.cpp
        Stored_Text_Test.cpp
        XMP_Thumbnails_Test.cpp
    USES bkimgutl bkimgutl_pictures hv_sample_pictures
    LINKS JPEG::JPEG)
