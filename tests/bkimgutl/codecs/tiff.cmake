hv_test(NAME tiff_test LAYER plain
    SOURCES Tiff_Fixture.cpp Tiff_Fixture.h Tiff_Load_Test.cpp Tiff_Save_Test.cpp Tiff_Text_Test.cpp Tiff_Hostile_Test.cpp Tiff_Turn_Test.cpp
        Upright_Sink_Test.cpp
    USES bkimgutl bkimgutl_pictures hv_sample_pictures)
