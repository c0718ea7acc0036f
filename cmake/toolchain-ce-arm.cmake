# The device: Windows CE 3.0 on ARM without floating-point unit. The compiler makes ELF; its linked
# image becomes a PE file through tools/device (cmake/device.cmake). Headers: the compiler's own, the
# desktop's Windows headers, and the header-only parts of the reference compiler's C++ library.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(KELVO_CE_ARM ON)
set(CMAKE_C_COMPILER arm-none-eabi-gcc)
set(CMAKE_CXX_COMPILER arm-none-eabi-g++)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# A search of the system's own folders would find the build machine's libraries.
set(CMAKE_FIND_ROOT_PATH ${CMAKE_CURRENT_LIST_DIR}/../tools/device)

execute_process(COMMAND arm-none-eabi-gcc -print-file-name=include
                OUTPUT_VARIABLE kelvo_compiler_headers OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND i686-w64-mingw32-g++-posix -print-file-name=include/c++
                OUTPUT_VARIABLE kelvo_cxx_headers OUTPUT_STRIP_TRAILING_WHITESPACE)
set(kelvo_device_headers ${CMAKE_CURRENT_LIST_DIR}/../tools/device/headers)

# The CPU has neither BX nor half a floating-point unit; wchar_t has 16 bits and plain char is signed,
# as the system's own compilers have them. Nothing is thrown and no object is built lazily.
set(kelvo_flags
    -march=armv4 -mtune=strongarm1110 -marm -mfloat-abi=soft -mabi=aapcs
    -fshort-wchar -fno-short-enums -fsigned-char -fms-extensions
    -ffunction-sections -fdata-sections -fno-asynchronous-unwind-tables -fno-ident
    "-ffile-prefix-map=${CMAKE_SOURCE_DIR}=."
    # The stack is committed page by page behind a guard page: no frame may step over it.
    -Wframe-larger-than=3500
    # No trap instructions, which this CPU does not have, in place of paths that can only fault.
    -fno-isolate-erroneous-paths-dereference
    # The attributes that the desktop headers give to imported functions mean nothing here.
    -Wno-attributes
    -DKELVO_CE_ARM=1 -D_ARM_=1 -D_WIN32=1 -DWIN32=1
    "\"-D__declspec(x)=__attribute__((x))\""
    -D__stdcall= -D__cdecl= -D_cdecl= -D_stdcall= -D__fastcall= -D__thiscall=)
set(kelvo_system_headers -isystem ${kelvo_device_headers} -isystem ${kelvo_compiler_headers}
    -isystem /usr/share/mingw-w64/include)
set(kelvo_cxx_system_headers -nostdinc++ -isystem ${kelvo_cxx_headers}
    -isystem ${kelvo_cxx_headers}/i686-w64-mingw32)
list(JOIN kelvo_flags " " kelvo_flags)
list(JOIN kelvo_system_headers " " kelvo_system_headers)
list(JOIN kelvo_cxx_system_headers " " kelvo_cxx_system_headers)
set(CMAKE_C_FLAGS_INIT "${kelvo_flags} -nostdinc ${kelvo_system_headers}")
set(CMAKE_CXX_FLAGS_INIT
    "${kelvo_flags} -nostdinc -fno-threadsafe-statics ${kelvo_cxx_system_headers} ${kelvo_system_headers}")
