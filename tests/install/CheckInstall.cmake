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

# ---- The installed window keeps its working files per user, not in bin/ (the file list
# below shows anything it leaves there). Its own folders, so no user's files are touched.
set(home ${PREFIX}-home)
file(REMOVE_RECURSE ${home})
file(MAKE_DIRECTORY ${home}/run)
file(CHMOD ${home}/run DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
set(per_user "${home}/data/Corvane Software Development Inc./TKZBackplot")
execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen XDG_DATA_HOME=${home}/data
    XDG_CONFIG_HOME=${home}/config XDG_RUNTIME_DIR=${home}/run
    sh -c [[ "$1" "$2" & pid=$!
      i=0; while [ $i -lt 200 ] && [ ! -s "$3/TKZGraph.Dll" ]; do sleep 0.1; i=$((i + 1)); done
      kill $pid; wait $pid; [ -s "$3/TKZGraph.Dll" ] ]]
    sh ${PREFIX}/bin/backplot ${PREFIX}/share/tarvo-backplot/examples/mill_incremental.nc ${per_user}
  RESULT_VARIABLE no_records OUTPUT_QUIET ERROR_QUIET)
if(no_records)
  fail("the installed window wrote no records into ${per_user} within 20 s")
endif()
file(REMOVE_RECURSE ${home})

# ---- Exactly these files, no more, no fewer: the programs, the desktop files, every page of
# the guide and every sample of the source tree, the icon in each size ----
set(expected
  bin/backplot
  bin/backplot-cli
  libexec/tarvo-backplot/backplot-cli-draw
  share/bash-completion/completions/backplot-cli
  share/man/man1/backplot-cli.1.gz
  share/man/man1/backplot.1.gz
  share/applications/tarvo-backplot.desktop
  share/doc/tarvo-backplot/LICENSE
  share/icons/hicolor/scalable/apps/tarvo-backplot.svg
  share/metainfo/com.corvane.tarvo_backplot.metainfo.xml
  share/mime/packages/tarvo-backplot.xml)
file(GLOB guide RELATIVE ${SOURCE_DIR}/docs ${SOURCE_DIR}/docs/help/*.html ${SOURCE_DIR}/docs/help/*.css)
file(GLOB samples RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/examples/*.nc)
list(TRANSFORM guide PREPEND share/tarvo-backplot/)
list(TRANSFORM samples PREPEND share/tarvo-backplot/)
set(icon_sizes 16 22 24 32 48 64 128 256)
foreach(size IN LISTS icon_sizes)
  list(APPEND expected share/icons/hicolor/${size}x${size}/apps/tarvo-backplot.png)
endforeach()
list(APPEND expected ${guide} ${samples})
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

# ---- The command-line program runs (the window ran above) and hands its drawing commands
# to the helper where the install layout puts it ----
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

# ---- The menu entry (its form is the validator's below) ----
file(STRINGS ${PREFIX}/share/applications/tarvo-backplot.desktop desktop_lines)
foreach(line
    "Name=Tarvo Backplot"
    "Exec=${PREFIX}/bin/backplot %f"
    "TryExec=${PREFIX}/bin/backplot"
    "Icon=tarvo-backplot"
    "Terminal=false"
    "MimeType=text/x-gcode;text/x.gcode;")
  list(FIND desktop_lines "${line}" at)
  if(at EQUAL -1)
    fail("the .desktop file lacks the line '${line}'")
  endif()
endforeach()

# ---- The menu entry and the software centre's entry pass their validators without a word.
# The tools come with the project's dependencies: a check left out for want of one would
# pass without looking, so a missing tool fails here ----
set(metainfo ${PREFIX}/share/metainfo/com.corvane.tarvo_backplot.metainfo.xml)
foreach(tool desktop-file-validate appstreamcli man update-mime-database gio)
  find_program(${tool}_program ${tool})
  if(NOT ${tool}_program)
    message(FATAL_ERROR "${tool} is missing: run scripts/install-deps.sh")
  endif()
endforeach()
execute_process(COMMAND ${desktop-file-validate_program} ${PREFIX}/share/applications/tarvo-backplot.desktop
  RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE said)
if(NOT status EQUAL 0 OR said)
  fail("desktop-file-validate (${status}): ${said}")
endif()
# validate-tree also checks that the metadata, its menu entry and its icon belong together.
foreach(check "validate;${metainfo}" "validate-tree;${PREFIX}")
  execute_process(COMMAND ${appstreamcli_program} ${check} --no-net --pedantic
    RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE said)
  if(NOT status EQUAL 0 OR said MATCHES "(^|\n)[EWIP]: ")
    fail("appstreamcli ${check} (${status}): ${said}")
  endif()
endforeach()
# Its newest release is this version.
file(READ ${metainfo} metadata)
string(REGEX MATCH "<release version=\"([^\"]*)\"" newest "${metadata}")
set(newest ${CMAKE_MATCH_1})
file(STRINGS ${BUILD_DIR}/CMakeCache.txt project_version REGEX "^CMAKE_PROJECT_VERSION:")
string(REGEX REPLACE ".*=" "" project_version "${project_version}")
if(NOT newest STREQUAL project_version)
  fail("the metadata's newest release is '${newest}', the project's version ${project_version}")
endif()

# ---- The manual pages render without a warning, as lintian reads them ----
file(GLOB man_pages ${PREFIX}/share/man/man*/*)
foreach(page IN LISTS man_pages)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8 MANROFFSEQ= MANWIDTH=80
      ${man_program} --warnings -E UTF-8 -l -Tutf8 -Z ${page}
    RESULT_VARIABLE status OUTPUT_VARIABLE text ERROR_VARIABLE warnings)
  if(NOT status EQUAL 0 OR warnings OR NOT text)
    fail("man ${page} (${status}): ${warnings}")
  endif()
endforeach()

# ---- The file types, as a desktop reads them: G-code text under every name we claim, while
# a binary NetCDF file keeps its own type. Two arrangements: the package's, where our types
# and the system's share one database, and a home prefix's, where ours lie in a database of
# their own in front of the system's (the two are searched differently) ----
set(system_types /usr/share/mime/packages/freedesktop.org.xml)
set(scratch ${PREFIX}-mime)
file(REMOVE_RECURSE ${scratch})
set(ours ${PREFIX}/share/mime/packages/tarvo-backplot.xml)
file(COPY ${system_types} ${ours} DESTINATION ${scratch}/package/mime/packages)
file(COPY ${system_types} DESTINATION ${scratch}/system/mime/packages)
file(COPY ${ours} DESTINATION ${scratch}/home/mime/packages)
foreach(database package system home)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env XDG_DATA_DIRS=${scratch}/${database}
      ${update-mime-database_program} ${scratch}/${database}/mime
    RESULT_VARIABLE status ERROR_VARIABLE errors)
  if(NOT status EQUAL 0 OR errors)
    fail("update-mime-database: ${status} ${errors}")
  endif()
endforeach()
set(files ${scratch}/files)
file(MAKE_DIRECTORY ${files})
file(COPY_FILE ${PREFIX}/share/tarvo-backplot/examples/lathe_shaft.nc ${files}/lathe.ngc)
file(WRITE ${files}/tape.nc "%\nO1000\nG90 G0 X10.\n")
file(WRITE ${files}/words.tap "G90 G21\nG1 X5. F100\n")
file(WRITE ${files}/blocks.cnc "N10 G0 X0\n")
file(WRITE ${files}/notes.gcode "(made by hand)\nG0 X1\n")
file(WRITE ${files}/lowercase.nc "g0 x1\n")     # text all the same
file(WRITE ${files}/program "(PLATE)\nG90\n")    # no name to go by
# The first bytes of a NetCDF classic file: magic, no records, no dimensions.
execute_process(COMMAND printf "CDF\\001\\000\\000\\000\\000\\000\\000\\000\\000" OUTPUT_FILE ${files}/ocean.nc)
foreach(dirs "${scratch}/none;${scratch}/package" "${scratch}/home;${scratch}/system")
  list(GET dirs 0 data_home)
  list(GET dirs 1 data_dirs)
  foreach(pair "lathe.ngc;text/x-gcode" "tape.nc;text/x-gcode" "words.tap;text/x-gcode"
      "blocks.cnc;text/x-gcode" "notes.gcode;text/x-gcode" "lowercase.nc;text/x-gcode" "program;text/x-gcode"
      "ocean.nc;application/x-netcdf")
    list(GET pair 0 name)
    list(GET pair 1 type)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env XDG_DATA_HOME=${data_home} XDG_DATA_DIRS=${data_dirs}
        ${gio_program} info -a standard::content-type ${files}/${name}
      OUTPUT_VARIABLE info ERROR_QUIET)
    string(REGEX MATCH "content-type: [^\n]*" seen "${info}")
    if(NOT seen STREQUAL "content-type: ${type}")
      fail("${name} should be ${type}; with the types of ${data_home} and ${data_dirs} a desktop reads '${seen}'")
    endif()
  endforeach()
endforeach()
file(REMOVE_RECURSE ${scratch})

# ---- The icons: PNG files of the size their folder names ----
foreach(size IN LISTS icon_sizes)
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
