# Installs the build into a fresh prefix and checks what lands there.
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DPREFIX=... -P CheckInstall.cmake
set(failures "")
macro(fail message)
  list(APPEND failures "${message}")
endmacro()

file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX}
  RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "cmake --install failed (${status}): ${errors}")
endif()

# ---- Exactly these files, no more, no fewer ----
set(expected
  bin/backplot
  bin/backplot-cli
  libexec/tarvo-backplot/backplot-cli-draw
  share/bash-completion/completions/backplot-cli
  share/man/man1/backplot-cli.1.gz
  share/man/man1/backplot.1.gz
  share/applications/tarvo-backplot.desktop
  share/doc/tarvo-backplot/LICENSE
  share/icons/hicolor/128x128/apps/tarvo-backplot.png
  share/icons/hicolor/16x16/apps/tarvo-backplot.png
  share/icons/hicolor/22x22/apps/tarvo-backplot.png
  share/icons/hicolor/24x24/apps/tarvo-backplot.png
  share/icons/hicolor/256x256/apps/tarvo-backplot.png
  share/icons/hicolor/32x32/apps/tarvo-backplot.png
  share/icons/hicolor/48x48/apps/tarvo-backplot.png
  share/icons/hicolor/64x64/apps/tarvo-backplot.png
  share/icons/hicolor/scalable/apps/tarvo-backplot.svg
  share/mime/packages/tarvo-backplot.xml
  share/tarvo-backplot/examples/lathe_shaft.nc
  share/tarvo-backplot/examples/mill_incremental.nc
  share/tarvo-backplot/examples/mill_pocket_plate.nc
  share/tarvo-backplot/help/blocks.html
  share/tarvo-backplot/help/cli.html
  share/tarvo-backplot/help/files.html
  share/tarvo-backplot/help/help.css
  share/tarvo-backplot/help/index.html
  share/tarvo-backplot/help/keys.html
  share/tarvo-backplot/help/messages.html
  share/tarvo-backplot/help/mill-lathe.html
  share/tarvo-backplot/help/opening.html
  share/tarvo-backplot/help/output.html
  share/tarvo-backplot/help/partial.html
  share/tarvo-backplot/help/plot.html
  share/tarvo-backplot/help/properties.html
  share/tarvo-backplot/help/slow-motion.html
  share/tarvo-backplot/help/stepping.html
  share/tarvo-backplot/help/troubleshooting.html
  share/tarvo-backplot/help/zoom-pan.html)
file(GLOB_RECURSE installed LIST_DIRECTORIES false RELATIVE ${PREFIX} ${PREFIX}/*)
list(SORT installed)
list(SORT expected)
if(NOT installed STREQUAL expected)
  set(missing ${expected})
  list(REMOVE_ITEM missing ${installed})
  set(extra ${installed})
  list(REMOVE_ITEM extra ${expected})
  fail("installed files differ: missing [${missing}], not expected [${extra}]")
endif()

# ---- The two programs can run; the command-line one reads an installed sample ----
foreach(program backplot backplot-cli)
  execute_process(COMMAND test -x ${PREFIX}/bin/${program} RESULT_VARIABLE not_executable)
  if(not_executable)
    fail("bin/${program} is not executable")
  endif()
endforeach()
execute_process(COMMAND ${PREFIX}/bin/backplot-cli records ${PREFIX}/share/tarvo-backplot/examples/mill_incremental.nc
  RESULT_VARIABLE status OUTPUT_VARIABLE records ERROR_VARIABLE errors)
string(REGEX MATCHALL "\n" lines "${records}")
list(LENGTH lines line_count)
if(NOT status EQUAL 0 OR line_count LESS 10)
  fail("installed backplot-cli records: status ${status}, ${line_count} lines, ${errors}")
endif()

# The drawing commands are handed over to the helper where the install layout puts it.
execute_process(COMMAND ${PREFIX}/bin/backplot-cli render ${PREFIX}/share/tarvo-backplot/examples/mill_incremental.nc
    -o ${PREFIX}/../installed-render.png
  RESULT_VARIABLE status ERROR_VARIABLE errors)
file(READ ${PREFIX}/../installed-render.png png_head LIMIT 8 HEX)
if(NOT status EQUAL 0 OR NOT png_head STREQUAL "89504e470d0a1a0a")
  fail("installed backplot-cli render: status ${status}, ${errors}")
endif()

# ---- Shipped files are the source files ----
foreach(pair
    "share/tarvo-backplot/help/index.html;docs/help/index.html"
    "share/tarvo-backplot/help/help.css;docs/help/help.css"
    "share/tarvo-backplot/examples/lathe_shaft.nc;examples/lathe_shaft.nc"
    "share/icons/hicolor/scalable/apps/tarvo-backplot.svg;desktop/tarvo-backplot.svg"
    "share/mime/packages/tarvo-backplot.xml;desktop/tarvo-backplot-mime.xml"
    "share/doc/tarvo-backplot/LICENSE;LICENSE")
  list(GET pair 0 installed_file)
  list(GET pair 1 source_file)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${PREFIX}/${installed_file} ${SOURCE_DIR}/${source_file}
    RESULT_VARIABLE different)
  if(different)
    fail("${installed_file} differs from ${source_file}")
  endif()
endforeach()

# ---- The menu entry ----
file(STRINGS ${PREFIX}/share/applications/tarvo-backplot.desktop desktop_lines)
foreach(line
    "[Desktop Entry]"
    "Type=Application"
    "Name=Tarvo Backplot"
    "Exec=${PREFIX}/bin/backplot %f"
    "TryExec=${PREFIX}/bin/backplot"
    "Icon=tarvo-backplot"
    "Terminal=false"
    "Categories=Graphics;Science;Engineering;Viewer;"
    "MimeType=text/x.gcode;")
  list(FIND desktop_lines "${line}" at)
  if(at EQUAL -1)
    fail("the .desktop file lacks the line '${line}'")
  endif()
endforeach()
list(GET desktop_lines 0 first_line)
if(NOT first_line STREQUAL "[Desktop Entry]")
  fail("the .desktop file does not start with its group header")
endif()

# ---- The file types: our extensions on the G-code type ----
file(READ ${PREFIX}/share/mime/packages/tarvo-backplot.xml mime)
foreach(part "<mime-type type=\"text/x.gcode\">" "<glob pattern=\"*.nc\"/>" "<glob pattern=\"*.ngc\"/>"
    "<glob pattern=\"*.tap\"/>" "<sub-class-of type=\"text/plain\"/>")
  string(FIND "${mime}" "${part}" at)
  if(at EQUAL -1)
    fail("the MIME package lacks ${part}")
  endif()
endforeach()

# ---- The icons: PNG files of the size their folder names ----
foreach(size 16 22 24 32 48 64 128 256)
  set(png ${PREFIX}/share/icons/hicolor/${size}x${size}/apps/tarvo-backplot.png)
  file(READ ${png} header LIMIT 24 HEX)
  string(SUBSTRING "${header}" 0 16 signature)
  string(SUBSTRING "${header}" 32 8 width_hex)
  string(SUBSTRING "${header}" 40 8 height_hex)
  math(EXPR width "0x${width_hex}")
  math(EXPR height "0x${height_hex}")
  if(NOT signature STREQUAL "89504e470d0a1a0a" OR NOT width EQUAL size OR NOT height EQUAL size)
    fail("${size}x${size} icon: signature ${signature}, ${width} x ${height} pixels")
  endif()
endforeach()

file(REMOVE_RECURSE ${PREFIX})
if(failures)
  list(JOIN failures "\n  " report)
  message(FATAL_ERROR "install check failed:\n  ${report}")
endif()
message(STATUS "install check passed")
