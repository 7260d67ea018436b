# What every target of this project is compiled with. Sanitizers and hardening come from the presets.
add_library(quorin_options INTERFACE)
target_compile_features(quorin_options INTERFACE cxx_std_20)
target_compile_options(quorin_options INTERFACE -Wall -Wextra -Wpedantic)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Every program in one folder, as they stand side by side once installed: zk4sim looks for quorin beside itself.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
