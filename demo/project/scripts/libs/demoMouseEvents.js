// Mouse events on the demo's alarm table. tableMouseEvent(event, alarm,
// related) gets the event (type 0 press, 1 click, 2 double-click; the mouse
// buttons; the row path; the column; the pointer's screen position), the
// row's alarm and the related alarm of its came/went pair, each keyed by the
// alarm property names. A right-button press answers with a context menu;
// other events have no menu.
//
// The values of the entries are what the demo window carries out:
// 1 acknowledge the alarm, 2 copy the element name, 3 switch the grouped view.
var Acknowledge = 1;
var CopyElementName = 2;
var GroupedView = 3;
var RightButton = 2;

function tableMouseEvent(event, alarm, related) {
    if (event.type !== 0 || event.button !== RightButton)
        return null;
    var details = [
        {type: "label", label: "Element: " + alarm.dpe},
        {type: "label", label: "Description: " + alarm.description},
        {type: "label", label: "Class: " + alarm.alarmClass + ", priority " + alarm.priority}
    ];
    if (related.dpe)
        details.push({type: "label", label: "Went at " + related.time});
    details.push({type: "separator"});
    details.push({type: "push", label: "Copy element name", value: CopyElementName});
    var menu = [
        {type: "label", label: alarm.system + ": " + alarm.text, enabled: false},
        {type: "separator"},
        {type: "push", label: "Acknowledge", value: Acknowledge,
         enabled: alarm.ackable === true && alarm.acknowledged === false},
        {type: "cascade", label: "Details", items: details},
        // A row below a group node has a row path of more than one level.
        {type: "check", label: "Grouped view", value: GroupedView, checked: event.row.length > 1}
    ];
    return {menuX: event.screenX, menuY: event.screenY, menu: JSON.stringify(menu)};
}
