# On a Mac a package that is not there is fetched in a fixed version and becomes part of this build.
# Qt alone has to be there before.
include(FetchContent)

find_package(QCoro6 QUIET COMPONENTS Core)
if(NOT QCoro6_FOUND)
    message(STATUS "QCoro was not found and is fetched")
    block()
        set(USE_QT_VERSION 6)
        set(BUILD_SHARED_LIBS OFF)
        set(BUILD_TESTING OFF)
        set(QCORO_BUILD_EXAMPLES OFF)
        foreach(module IN ITEMS QTDBUS QTNETWORK QTWEBSOCKETS QTQUICK QML QTTEST)
            set(QCORO_WITH_${module} OFF)
        endforeach()
        FetchContent_Declare(qcoro
            URL https://github.com/qcoro/qcoro/archive/refs/tags/v0.12.0.tar.gz
            URL_HASH SHA256=809afafab61593f994c005ca6e242300e1e3e7f4db8b5d41f8c642aab9450fbc
            DOWNLOAD_EXTRACT_TIMESTAMP ON
            SYSTEM)
        FetchContent_MakeAvailable(qcoro)
        # An installed QCoro has these headers in its own path; one that is built along has not.
        target_include_directories(QCoro6Coro SYSTEM INTERFACE
            $<BUILD_INTERFACE:${qcoro_BINARY_DIR}/qcoro/QCoro>)
        target_include_directories(QCoro6Core SYSTEM INTERFACE
            $<BUILD_INTERFACE:${qcoro_BINARY_DIR}/qcoro/core/QCoro>)
    endblock()
endif()

find_package(nlohmann_json 3.11 QUIET)
if(NOT nlohmann_json_FOUND)
    message(STATUS "nlohmann_json was not found and is fetched")
    FetchContent_Declare(nlohmann_json
        URL https://github.com/nlohmann/json/releases/download/v3.11.3/json.tar.xz
        URL_HASH SHA256=d6c65aca6b1ed68e7a182f4757257b107ae403032760ed6ef121c9d55e81757d
        DOWNLOAD_EXTRACT_TIMESTAMP ON
        SYSTEM)
    FetchContent_MakeAvailable(nlohmann_json)
endif()
