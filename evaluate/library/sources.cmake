list(APPEND hv_evaluate_sources
    library/Formula_Host_Services.h
    library/Library.h)
