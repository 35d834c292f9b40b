# Turns files into string literals: cmake -DOUTPUT=x.cpp -DFOLDER=... -P embed.cmake
# site.css becomes siteCss, site.js becomes siteJs.
set(code "#include \"catalogue/resources.h\"\n\nnamespace Tolv::Tool::Catalogue {\n\n")
foreach(file IN ITEMS Css Js)
    string(TOLOWER "${file}" extension)
    file(READ "${FOLDER}/site.${extension}" text)
    string(APPEND code "std::string_view const site${file} = R\"~~~(${text})~~~\";\n\n")
endforeach()
file(WRITE "${OUTPUT}" "${code}} // namespace Tolv::Tool::Catalogue\n")
