# cmake -DIMAGE=<dll> -DOBJDUMP=.. -P WindowsImageTest.cmake: what the loader and the user's system read of the
# library. Needs the separated debug information beside it.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${OBJDUMP} -p -h -t ${IMAGE} OUTPUT_VARIABLE image COMMAND_ERROR_IS_FATAL ANY)

function(expect what found)
    if(NOT found STREQUAL ARGN)
        message(SEND_ERROR "${what}: ${found}\nand not ${ARGN}")
    endif()
endfunction()

# Fifteen names with their ordinals, which are counted from 0 here, and nothing else.
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table.*\n\nThe Function Table" table "${image}")
string(REGEX MATCHALL "[0-9]+\\] [A-Za-z_0-9@]+" names "${table}")
list(TRANSFORM names REPLACE "\\] " ":")
expect(exports "${names}"
    21:ExecuteCommand 31:GetFeatureAttr 29:GetFeatureName 30:GetFeatureType 9:GetImage 11:GetImageAttributes
    32:GetValidEnum 0:GetVideoChannel 22:ReadValue 2:ReleaseVideoChannel 1:SetupCommonParams
    19:StartAcquisition 20:StopAcquisition 10:WaitForIntegration 23:WriteValue)
string(REGEX MATCHALL "Export RVA" addresses "${image}")
list(LENGTH addresses count)
expect("exported addresses" "${count}" 15)

# Needs the system, and the two camera libraries by ordinal alone: a name would follow its hint.
string(REGEX MATCHALL "DLL Name: [^\n]+" libraries "${image}")
list(TRANSFORM libraries REPLACE "DLL Name: " "")
list(TRANSFORM libraries TOLOWER)
foreach(library ethlib.dll orvo_genicam.dll kernel32.dll)
    if(NOT library IN_LIST libraries)
        message(SEND_ERROR "${library} is not among ${libraries}")
    endif()
endforeach()
list(FILTER libraries EXCLUDE REGEX "^(ethlib|orvo_genicam|kernel32|msvcrt|api-ms-win-.*)\\.dll$")
expect("further libraries" "${libraries}")
foreach(library ethlib orvo_genicam)
    string(REGEX MATCH "DLL Name: ${library}\\.dll\n[^\n]*\n([^\n]+\n)*" imports "${image}")
    string(REGEX MATCHALL "\n\t[^v][^\n]+" imports "${imports}")   # without the headline
    if(NOT imports)
        message(SEND_ERROR "${library} gives nothing")
    endif()
    list(FILTER imports EXCLUDE REGEX "^\n\t80000000[0-9a-f]+\t")
    expect("${library} by name" "${imports}")
endforeach()

# Ordinals from 1; hardened, relocatable, stripped, with a version.
foreach(mark "Ordinal Base 1\n" HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT " .reloc " "no symbols")
    string(FIND "${image}" "${mark}" place)
    if(place EQUAL -1)
        message(SEND_ERROR "lacks ${mark}")
    endif()
endforeach()
file(READ ${IMAGE} bytes HEX)
string(REGEX MATCH "bd04effe000001000000030000000000" version "${bytes}")   # the record of version 3.0.0.0
expect(version "${version}" bd04effe000001000000030000000000)
file(SIZE ${IMAGE} size)
file(SIZE ${IMAGE}.debug debugSize)
if(NOT debugSize GREATER size)
    message(SEND_ERROR "the debug information is not beside the library")
endif()
