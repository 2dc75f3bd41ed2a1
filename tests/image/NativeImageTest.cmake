# cmake -DIMAGE=<so> -DNM=.. -P NativeImageTest.cmake: no symbol but the fifteen exports leaves the library.
execute_process(COMMAND ${NM} -D --defined-only ${IMAGE} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[A-Za-z] [A-Za-z_0-9@]+" symbols "${symbols}")
list(TRANSFORM symbols REPLACE "^[A-Za-z] " "")
set(expected
    ExecuteCommand GetFeatureAttr GetFeatureName GetFeatureType GetImage GetImageAttributes GetValidEnum
    GetVideoChannel ReadValue ReleaseVideoChannel SetupCommonParams StartAcquisition StopAcquisition
    WaitForIntegration WriteValue)
list(SORT symbols)
if(NOT symbols STREQUAL expected)
    message(FATAL_ERROR "exports ${symbols}\nand not ${expected}")
endif()
