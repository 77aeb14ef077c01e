#compdef kzdraw
# Completion of kzdraw for zsh.

local -a commands help json pictures colors
local drawings='*:drawing:_files -g "*.svg(|z)(-.)"'
commands=(
    'info:tell what drawings hold'
    'tools:list the tools of the plug-in'
    'attributes:list what objects can be selected by'
    'select:select objects and tell which'
    'view:show and hide colors'
    'render:draw pictures of drawings'
    'prefs:tell what the dialogs remember'
    'script:run the commands of a script'
    'serve:show drawings and tools in a browser'
    'window:show a drawing in a window, on Windows'
)
help=({-h,--help}'[print the help and exit]')
json=('--json[print JSON]')
pictures=('--size[size of the picture]:WIDTHxHEIGHT' '--background[ground of the picture]:color:(none white black)'
    {-o,--output}'[file to write]:file:_files')
colors=('*--hide[hide what has this color]:color' '*--show[show what has this color]:color'
    '*--only[hide what has any other color]:color' '*--except[show what has any other color]:color')

if ((CURRENT == 2)); then
    _describe -t commands command commands
    _arguments '--version[print the version and exit]' $help
    return
fi
shift words
((CURRENT--))
case $words[1] in
    info) _arguments $help $json $drawings ;;
    tools) _arguments $help $json $drawings ;;
    attributes) _arguments $help $json $drawings ;;
    select)
        _arguments $help $json '--similar-to[objects of the class of this one]:object' \
            '--same-color-as[objects with the fill of this one]:object' \
            '*--where[objects that this entry stands for]:PAGE/PATH' '*--within[among these objects]:object' $drawings
        ;;
    view) _arguments $help $json $colors $pictures $drawings ;;
    render) _arguments $help $json $pictures '--area[part to draw]:X,Y,WIDTH,HEIGHT' $drawings ;;
    prefs) _arguments $help $json '--reset[forget it]' ;;
    script) _arguments $help '1:script:_files' ;;
    window) _arguments $help $drawings ;;
    serve) _arguments $help '--port[port of the page]:port' '--no-open[do not open the page]' $drawings ;;
esac
