<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>Text</name>
    <message>
        <source>没有方案“</source>
        <translation>There is no scheme “</translation>
    </message>
    <message>
        <source>”，取基础网络</source>
        <translation>”, the base network is taken</translation>
    </message>
    <message>
        <source>网络没有方案</source>
        <translation>The network has no scheme</translation>
    </message>
    <message>
        <source>网络不能存入数据库：</source>
        <translation>The network cannot be stored in the database: </translation>
    </message>
    <message>
        <source>实时库文件“</source>
        <translation>Real-time file “</translation>
    </message>
    <message>
        <source>打不开：</source>
        <translation> cannot be opened: </translation>
    </message>
    <message>
        <source>已损坏或不是实时库，不能打开</source>
        <translation> is damaged or no real-time database and cannot be opened</translation>
    </message>
    <message>
        <source>不是实时库，不能打开</source>
        <translation> is no real-time database and cannot be opened</translation>
    </message>
    <message>
        <source>由更新版本的程序写成，不能打开</source>
        <translation> was written by a newer version and cannot be opened</translation>
    </message>
    <message>
        <source>不能写入</source>
        <translation> cannot be written</translation>
    </message>
    <message>
        <source>实时库操作失败：</source>
        <translation>Real-time database operation failed: </translation>
    </message>
    <message>
        <source>本机</source>
        <translation>on this machine</translation>
    </message>
    <message>
        <source>数据库服务器</source>
        <translation>The database server </translation>
    </message>
    <message>
        <source>拒绝用户</source>
        <translation> refuses the user </translation>
    </message>
    <message>
        <source>登录，请检查用户名和密码</source>
        <translation>; please check user name and password</translation>
    </message>
    <message>
        <source>不能连接到数据库服务器</source>
        <translation>Cannot connect to the database server </translation>
    </message>
    <message>
        <source>数据库</source>
        <translation>Database </translation>
    </message>
    <message>
        <source>由较新版本的程序建立（版本</source>
        <translation> was made by a newer version (</translation>
    </message>
    <message>
        <source>），请升级程序</source>
        <translation>); please update the program</translation>
    </message>
    <message>
        <source>没有建立完整，不能打开，请删除后重新建立</source>
        <translation> was not completed and cannot be opened; please delete it and create it again</translation>
    </message>
    <message>
        <source>没有给出原因</source>
        <translation>no reason given</translation>
    </message>
    <message>
        <source>磁盘空间不足（</source>
        <translation>the disk is full (</translation>
    </message>
    <message>
        <source>不能建立数据目录</source>
        <translation>Cannot create the data folder </translation>
    </message>
    <message>
        <source>数据目录</source>
        <translation>The data folder </translation>
    </message>
    <message>
        <source>不可写</source>
        <translation> is not writable</translation>
    </message>
    <message>
        <source>数据库服务器没有响应</source>
        <translation>The database server does not answer</translation>
    </message>
    <message>
        <source>数据目录%1由较新版本的程序建立（版本%2），请升级程序</source>
        <translation>The data folder %1 was made by a newer version (%2); please update the program</translation>
    </message>
    <message>
        <source>找不到数据库服务器程序</source>
        <translation>Cannot find the database server program </translation>
    </message>
    <message>
        <source>，请安装MariaDB服务器</source>
        <translation>; please install the MariaDB server</translation>
    </message>
    <message>
        <source>找不到程序mariadb-install-db，请安装MariaDB服务器</source>
        <translation>Cannot find mariadb-install-db; please install the MariaDB server</translation>
    </message>
    <message>
        <source>不能建立数据库服务器的数据目录：</source>
        <translation>Cannot create the data folder of the database server: </translation>
    </message>
    <message>
        <source>找不到程序morvane-server-keeper，请重新安装</source>
        <translation>Cannot find morvane-server-keeper; please reinstall</translation>
    </message>
    <message>
        <source>不能启动程序morvane-server-keeper</source>
        <translation>Cannot start morvane-server-keeper</translation>
    </message>
    <message>
        <source>数据库服务器不能启动：</source>
        <translation>The database server cannot be started: </translation>
    </message>
    <message>
        <source>不能读设置文件</source>
        <translation>Cannot read the settings file </translation>
    </message>
    <message>
        <source>设置文件</source>
        <translation>Settings file </translation>
    </message>
    <message>
        <source>第</source>
        <translation>, row </translation>
    </message>
    <message>
        <source>行有错误</source>
        <translation> is wrong</translation>
    </message>
    <message>
        <source>第%1个值不是有限的数</source>
        <translation>value %1 is not a finite number</translation>
    </message>
    <message>
        <source>语句有%1处待填，给出了%2个值</source>
        <translation>the statement has %1 places, %2 values were given</translation>
    </message>
    <message>
        <source>含有控制字符</source>
        <translation>contains a control character</translation>
    </message>
    <message>
        <source>末尾有空格</source>
        <translation>ends in a blank</translation>
    </message>
    <message>
        <source>含有GBK字符集以外的字符</source>
        <translation>contains a character outside GBK</translation>
    </message>
    <message>
        <source>超过%1个字符</source>
        <translation>is longer than %1 characters</translation>
    </message>
    <message>
        <source>数据库语句失败：</source>
        <translation>Database statement failed: </translation>
    </message>
    <message>
        <source>与数据库服务器的连接中断：</source>
        <translation>The connection to the database server was lost: </translation>
    </message>
    <message>
        <source>没有与数据库服务器的连接</source>
        <translation>There is no connection to the database server</translation>
    </message>
    <message>
        <source>没有数据库连接</source>
        <translation>There is no database connection </translation>
    </message>
    <message>
        <source>转换线路数据失败</source>
        <translation>Converting the line data failed</translation>
    </message>
    <message>
        <source>转换双绕组变压器数据失败</source>
        <translation>Converting the data of two-winding transformers failed</translation>
    </message>
    <message>
        <source>转换三绕组变压器数据失败</source>
        <translation>Converting the data of three-winding transformers failed</translation>
    </message>
    <message>
        <source>转换电容器数据失败</source>
        <translation>Converting the capacitor data failed</translation>
    </message>
    <message>
        <source>转换电抗器数据失败</source>
        <translation>Converting the reactor data failed</translation>
    </message>
    <message>
        <source>转换发电机数据失败</source>
        <translation>Converting the generator data failed</translation>
    </message>
    <message>
        <source>开始进行拓扑分析.....
</source>
        <translation>Topology analysis started.....
</translation>
    </message>
    <message>
        <source>拓扑读取实时库有异常发生。
</source>
        <translation>The topology analysis could not read the real-time database.
</translation>
    </message>
    <message>
        <source>拓扑分析运行失败！
</source>
        <translation>The topology analysis failed!
</translation>
    </message>
    <message>
        <source>拓扑分析运行异常！
</source>
        <translation>The topology analysis broke off!
</translation>
    </message>
    <message>
        <source>拓扑分析成功完成！
</source>
        <translation>Topology analysis completed!
</translation>
    </message>
    <message>
        <source>拓扑数据写入实时库异常发生。
</source>
        <translation>The topology could not be written to the real-time database.
</translation>
    </message>
    <message>
        <source>潮流数据转换完毕</source>
        <translation>Load-flow data converted</translation>
    </message>
    <message>
        <source>方案数据转换完毕</source>
        <translation>Scheme data converted</translation>
    </message>
    <message>
        <source>计算无法启动</source>
        <translation>The calculation cannot start</translation>
    </message>
    <message>
        <source>没有当前保护类型的信息，不能形成计算控制信息</source>
        <translation>No data of the relay type; the control data cannot be formed</translation>
    </message>
    <message>
        <source>没有作业信息，不能形成计算控制信息</source>
        <translation>No data of the case; the control data cannot be formed</translation>
    </message>
    <message>
        <source>没有需要的规则，请检查规则库</source>
        <translation>The rules needed are missing; please check the rule library</translation>
    </message>
    <message>
        <source>不能转换分支系数计算结果</source>
        <translation>The results of the branch coefficients cannot be converted</translation>
    </message>
    <message>
        <source>执行</source>
        <translation>Running </translation>
    </message>
    <message>
        <source>失败，上一次计算还没有结束</source>
        <translation> failed: the calculation before has not ended</translation>
    </message>
    <message>
        <source>失败</source>
        <translation> failed</translation>
    </message>
    <message>
        <source>已中止</source>
        <translation> was stopped</translation>
    </message>
    <message>
        <source>异常终止，没有计算结果</source>
        <translation> ended abnormally; there is no result</translation>
    </message>
    <message>
        <source>出错，返回码</source>
        <translation> failed with exit code </translation>
    </message>
    <message>
        <source>，没有计算结果</source>
        <translation>; there is no result</translation>
    </message>
    <message>
        <source>不能采用已定义的故障，支路</source>
        <translation>A defined fault cannot be used: branch </translation>
    </message>
    <message>
        <source>不存在、无效或不在当前方案中</source>
        <translation> does not exist, is not valid or not in the scheme</translation>
    </message>
    <message>
        <source>不存在、无效或不在基础方案中</source>
        <translation> does not exist, is not valid or not in the base scheme</translation>
    </message>
    <message>
        <source>模板中有错误的故障位置</source>
        <translation>The template has a wrong fault location</translation>
    </message>
    <message>
        <source>已经被删除、无效或不在当前方案中</source>
        <translation> was deleted, is not valid or not in the scheme</translation>
    </message>
    <message>
        <source>没有对应的模板，不能自动设置分支系数计算信息</source>
        <translation>No template fits; the branch-coefficient data cannot be set up</translation>
    </message>
    <message>
        <source>已定义的主干支路</source>
        <translation>The defined main branch </translation>
    </message>
    <message>
        <source>中涉及的支路</source>
        <translation> refers to the branch </translation>
    </message>
    <message>
        <source>变压器支路</source>
        <translation>Transformer branch </translation>
    </message>
    <message>
        <source>没有零序通路</source>
        <translation> has no zero-sequence path</translation>
    </message>
    <message>
        <source>） 不存在、无效或不在当前方案中</source>
        <translation>) does not exist, is not valid or not in the scheme</translation>
    </message>
    <message>
        <source>正序支路</source>
        <translation>Positive-sequence branch </translation>
    </message>
    <message>
        <source>支路类型错误</source>
        <translation>Wrong kind of branch</translation>
    </message>
    <message>
        <source>零序支路</source>
        <translation>Zero-sequence branch </translation>
    </message>
    <message>
        <source>母线</source>
        <translation>Bus </translation>
    </message>
    <message>
        <source>支路</source>
        <translation>Branch </translation>
    </message>
    <message>
        <source>的节点</source>
        <translation>: node </translation>
    </message>
    <message>
        <source>没有基准电压，不能折算运行方式中的阻抗</source>
        <translation> has no base voltage; the impedance of the operating mode cannot be converted</translation>
    </message>
    <message>
        <source>作业中选择的运行方式 </source>
        <translation>The operating mode </translation>
    </message>
    <message>
        <source> 没有定义</source>
        <translation> is not defined</translation>
    </message>
    <message>
        <source>检修元件</source>
        <translation>Element under maintenance </translation>
    </message>
    <message>
        <source>故障方式编号越限（&gt;19），计算可能错误，请检查自定义的故障方式号</source>
        <translation>Fault number beyond 19; the calculation may be wrong. Please check the numbers of your own faults</translation>
    </message>
    <message>
        <source>检修方式编号越限（&gt;40），计算可能错误，请检查自定义的故障方式号</source>
        <translation>Outage number beyond 40; the calculation may be wrong. Please check the numbers of your own faults</translation>
    </message>
    <message>
        <source>要整定的保护不在当前方案或潮流作业对应的网络中,请检查数据</source>
        <translation>The relay to be set is not in the network of the scheme or load-flow case; please check the data</translation>
    </message>
    <message>
        <source>中有不能采用的数值，按0处理</source>
        <translation> has values that cannot be used; 0 is taken</translation>
    </message>
    <message>
        <source>中有</source>
        <translation> has </translation>
    </message>
    <message>
        <source>行不能识别</source>
        <translation> lines that cannot be read</translation>
    </message>
    <message>
        <source>作业中没有选择保护，不能进行计算</source>
        <translation>The case has no relays; nothing can be calculated</translation>
    </message>
    <message>
        <source>没有需要计算的定值，请检查整定的段和整定规则</source>
        <translation>There is no setting to calculate; please check the parts and the rules</translation>
    </message>
    <message>
        <source>参量类型错误或数值小于等于零</source>
        <translation>Wrong parameter type or a value not above zero</translation>
    </message>
    <message>
        <source>，不能确认灵敏度参量</source>
        <translation>, the sensitivity parameters cannot be confirmed</translation>
    </message>
    <message>
        <source>参量类型错误或数值小于等于零（</source>
        <translation>Wrong parameter type or a value not above zero (</translation>
    </message>
    <message>
        <source>项）</source>
        <translation> items)</translation>
    </message>
    <message>
        <source>参量值不能为0，请重新计算灵敏度校验用参量值，灵敏度＝定值/参量值</source>
        <translation>The parameter must not be 0; please calculate the sensitivity parameters again. Sensitivity = setting / parameter</translation>
    </message>
    <message>
        <source>定值不能为0，请重新计算定值，灵敏度＝参量值/定值</source>
        <translation>The setting must not be 0; please calculate it again. Sensitivity = parameter / setting</translation>
    </message>
    <message>
        <source>缺少计算灵敏度参量的规则</source>
        <translation>The rules for sensitivity parameters are missing</translation>
    </message>
    <message>
        <source>侧的灵敏度参量没有计算，不能形成灵敏度参量表，请先进行灵敏度参量计算</source>
        <translation> side: the sensitivity parameter has not been calculated; please calculate the sensitivity parameters first</translation>
    </message>
    <message>
        <source>没有与该保护类型对应的灵敏度参量信息</source>
        <translation>No sensitivity parameters are defined for this relay type</translation>
    </message>
    <message>
        <source>生成灵敏度中间结果表失败</source>
        <translation>The table of intermediate sensitivity results could not be made</translation>
    </message>
    <message>
        <source>整定规则</source>
        <translation>Setting rule </translation>
    </message>
    <message>
        <source>没有输出量</source>
        <translation> has no output</translation>
    </message>
    <message>
        <source>不存在</source>
        <translation> does not exist</translation>
    </message>
    <message>
        <source>整定目标列表与保护作业信息表不对应</source>
        <translation>The list of settings does not match the relays of the case</translation>
    </message>
    <message>
        <source>生成定值中间结果表失败</source>
        <translation>The table of intermediate settings could not be made</translation>
    </message>
    <message>
        <source>没有为当前保护类型指定灵敏度校验用参量的计算规则</source>
        <translation>No rule for sensitivity parameters is given for this relay type</translation>
    </message>
    <message>
        <source>灵敏度参量计算规则</source>
        <translation>Sensitivity rule </translation>
    </message>
    <message>
        <source>不存在或者没有输出量</source>
        <translation> does not exist or has no output</translation>
    </message>
    <message>
        <source>生成定值中间结果表失败，不能计算灵敏度参量</source>
        <translation>The table of intermediate settings could not be made; sensitivity parameters cannot be calculated</translation>
    </message>
    <message>
        <source>读</source>
        <translation>Reading </translation>
    </message>
    <message>
        <source>失败（</source>
        <translation> failed (</translation>
    </message>
    <message>
        <source>写</source>
        <translation>Writing </translation>
    </message>
    <message>
        <source>不能连接到数据库</source>
        <translation>Cannot connect to the database </translation>
    </message>
    <message>
        <source>打开数据库</source>
        <translation>Opening database </translation>
    </message>
    <message>
        <source>失败: </source>
        <translation> failed: </translation>
    </message>
    <message>
        <source>与数据库</source>
        <translation>Connected to database </translation>
    </message>
    <message>
        <source>连接成功!</source>
        <translation>!</translation>
    </message>
    <message>
        <source>没有建立与MYSQL库的连接</source>
        <translation>There is no connection to the database MYSQL</translation>
    </message>
    <message>
        <source>创建数据库</source>
        <translation>Creating database </translation>
    </message>
    <message>
        <source>成功</source>
        <translation> succeeded</translation>
    </message>
    <message>
        <source>无法确认的表</source>
        <translation>Unknown table</translation>
    </message>
    <message>
        <source>无法删除已经存在的表</source>
        <translation>Cannot drop the existing table </translation>
    </message>
    <message>
        <source>不能执行创建表操作</source>
        <translation>; the table is not created</translation>
    </message>
    <message>
        <source>表没有定义</source>
        <translation>: table is not defined</translation>
    </message>
    <message>
        <source>表创建失败********************</source>
        <translation>: creating the table failed********************</translation>
    </message>
    <message>
        <source>创建数据表失败</source>
        <translation>Creating the tables failed</translation>
    </message>
    <message>
        <source>数据库连接错误，不能删除临时表</source>
        <translation>No database connection; the working tables cannot be dropped</translation>
    </message>
    <message>
        <source>删除临时数据表</source>
        <translation>Dropping working table </translation>
    </message>
    <message>
        <source>失败!</source>
        <translation> failed!</translation>
    </message>
    <message>
        <source>与RLYTM库的数据连接错误，无法删除RLYTM库中各表数据</source>
        <translation>No connection to the database RLYTM; its tables cannot be emptied</translation>
    </message>
    <message>
        <source>无法删除RLYTM库中各表数据</source>
        <translation>The tables of the database RLYTM cannot be emptied</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Table </translation>
    </message>
    <message>
        <source>表中数据</source>
        <translation> emptied</translation>
    </message>
    <message>
        <source>_TEM 数据</source>
        <translation>_TEM: emptying</translation>
    </message>
    <message>
        <source>建立与mysql库的连接失败，不能删除数据库</source>
        <translation>No connection to the database mysql; the databases cannot be dropped</translation>
    </message>
    <message>
        <source>删除数据库</source>
        <translation>Dropping database </translation>
    </message>
    <message>
        <source>母线 </source>
        <translation> bus </translation>
    </message>
    <message>
        <source>发电机 </source>
        <translation> generator </translation>
    </message>
    <message>
        <source>并联电容器 </source>
        <translation> shunt capacitor </translation>
    </message>
    <message>
        <source>并联电抗器 </source>
        <translation> shunt reactor </translation>
    </message>
    <message>
        <source>线 </source>
        <translation> line </translation>
    </message>
    <message>
        <source>侧 </source>
        <translation> side </translation>
    </message>
    <message>
        <source>变压器 </source>
        <translation> transformer </translation>
    </message>
    <message>
        <source>侧绕组 </source>
        <translation> side winding </translation>
    </message>
    <message>
        <source>开关 </source>
        <translation> breaker </translation>
    </message>
    <message>
        <source>另一个程序正在改动工程，请稍后再试</source>
        <translation>Another program is changing the projects; please try again later</translation>
    </message>
    <message>
        <source>工程名不能为空</source>
        <translation>The project needs a name</translation>
    </message>
    <message>
        <source>工程名首尾不能有空格</source>
        <translation>The project name must not begin or end with a blank</translation>
    </message>
    <message>
        <source>工程名不能超过</source>
        <translation>The project name must not be longer than </translation>
    </message>
    <message>
        <source>个字符</source>
        <translation> characters</translation>
    </message>
    <message>
        <source>工程名中不能有路径符号、点号或控制字符</source>
        <translation>The project name must not contain path separators, dots or control characters</translation>
    </message>
    <message>
        <source>工程名不能以</source>
        <translation>The project name must not end in </translation>
    </message>
    <message>
        <source>结尾</source>
        <translation> (reserved)</translation>
    </message>
    <message>
        <source>工程名</source>
        <translation>The project name </translation>
    </message>
    <message>
        <source>是保留名</source>
        <translation> is reserved</translation>
    </message>
    <message>
        <source>不能建立工程目录</source>
        <translation>Cannot create the project folder </translation>
    </message>
    <message>
        <source>工程</source>
        <translation>Project </translation>
    </message>
    <message>
        <source>已经存在</source>
        <translation> already exists</translation>
    </message>
    <message>
        <source>服务器上已有不属于本机工程的数据库</source>
        <translation>The server already has a database that belongs to no project of this machine: </translation>
    </message>
    <message>
        <source>没有名为</source>
        <translation>There is no project named “</translation>
    </message>
    <message>
        <source>的工程</source>
        <translation>”</translation>
    </message>
    <message>
        <source>读 </source>
        <translation>Reading </translation>
    </message>
    <message>
        <source> 失败</source>
        <translation> failed</translation>
    </message>
    <message>
        <source>不能另存为同名工程</source>
        <translation>A project cannot be saved under its own name</translation>
    </message>
    <message>
        <source>不能删除工程目录</source>
        <translation>Cannot delete the project folder </translation>
    </message>
    <message>
        <source>规则库文件打不开</source>
        <translation>the rule file cannot be opened</translation>
    </message>
    <message>
        <source>没有这一列：</source>
        <translation>there is no such column: </translation>
    </message>
    <message>
        <source>缺少列：</source>
        <translation>column missing: </translation>
    </message>
    <message>
        <source> 不是数值：</source>
        <translation> is not a number: </translation>
    </message>
    <message>
        <source>规则库没有装入：数据库拒绝了规则表</source>
        <translation>The rule library was not loaded: the database refused a rule table</translation>
    </message>
    <message>
        <source>查询失败：</source>
        <translation>Query failed: </translation>
    </message>
    <message>
        <source>RTYPERULE 中的规则不存在</source>
        <translation>RTYPERULE names a rule that does not exist</translation>
    </message>
    <message>
        <source>规则不属于任何保护类型</source>
        <translation>The rule belongs to no relay type</translation>
    </message>
    <message>
        <source>规则的段号超出保护类型的段数</source>
        <translation>The part of the rule is beyond the parts of the relay type</translation>
    </message>
    <message>
        <source>被配合的保护类型不存在</source>
        <translation>The relay type to coordinate with does not exist</translation>
    </message>
    <message>
        <source>规则的输出不是该保护类型的定值</source>
        <translation>The output of the rule is no setting of the relay type</translation>
    </message>
    <message>
        <source>故障模板不存在</source>
        <translation>The fault template does not exist</translation>
    </message>
    <message>
        <source>故障计算没有模板</source>
        <translation>The fault calculation has no template</translation>
    </message>
    <message>
        <source>灵敏度校验的规则或方式有误</source>
        <translation>Rule or kind of the sensitivity check is wrong</translation>
    </message>
    <message>
        <source>故障模板的位置或类型有误</source>
        <translation>Location or kind in the fault template is wrong</translation>
    </message>
    <message>
        <source>缺少分支系数模板</source>
        <translation>The branch-coefficient template is missing</translation>
    </message>
    <message>
        <source>灵敏度规则不能与保护类型配合</source>
        <translation>A sensitivity rule cannot coordinate with a relay type</translation>
    </message>
    <message>
        <source>运行方式标志有误</source>
        <translation>Wrong operating-mode flag</translation>
    </message>
    <message>
        <source>NumMode 与 MODEINF 不符</source>
        <translation>NumMode does not match MODEINF</translation>
    </message>
    <message>
        <source>NVarin 与 VARIN 不符</source>
        <translation>NVarin does not match VARIN</translation>
    </message>
    <message>
        <source>NPar 与 PARAINF 不符</source>
        <translation>NPar does not match PARAINF</translation>
    </message>
    <message>
        <source>NRule 与 RULE 不符</source>
        <translation>NRule does not match RULE</translation>
    </message>
    <message>
        <source>NOutPut 与 VAROUT 不符</source>
        <translation>NOutPut does not match VAROUT</translation>
    </message>
    <message>
        <source>规则 %1：%2</source>
        <translation>Rule %1: %2</translation>
    </message>
    <message>
        <source>操作数 </source>
        <translation>Operand </translation>
    </message>
    <message>
        <source>变量 </source>
        <translation>Variable </translation>
    </message>
    <message>
        <source> 不属于这个计算</source>
        <translation> does not belong to this calculation</translation>
    </message>
    <message>
        <source>运算号有误</source>
        <translation>Wrong operation number</translation>
    </message>
    <message>
        <source>计算说明应当只写在故障计算的第一步</source>
        <translation>The note belongs on the first step of the fault calculation only</translation>
    </message>
    <message>
        <source>结果 </source>
        <translation>Result </translation>
    </message>
    <message>
        <source>有的输出没有算出</source>
        <translation>An output is not computed</translation>
    </message>
    <message>
        <source>另存数据表</source>
        <translation>Saving table </translation>
    </message>
    <message>
        <source>成功!</source>
        <translation> succeeded!</translation>
    </message>
    <message>
        <source>不能转换回连接，致命错误，请重新启动程序！</source>
        <translation>Cannot return to the connection; please restart the program!</translation>
    </message>
    <message>
        <source>不能另存工程</source>
        <translation>The project cannot be saved under that name</translation>
    </message>
    <message>
        <source>另存工程失败</source>
        <translation>Saving the project under another name failed</translation>
    </message>
    <message>
        <source>另存工程成功</source>
        <translation>The project was saved under the other name</translation>
    </message>
    <message>
        <source>不能关闭旧工程的数据库</source>
        <translation>The databases of the old project cannot be closed</translation>
    </message>
    <message>
        <source>电压等级数据有错不能选择保护</source>
        <translation>Wrong voltage level; relays cannot be selected</translation>
    </message>
    <message>
        <source>第%1行参数中有数据错误，请检查</source>
        <translation>Row %1 of the parameters has a wrong value, please check</translation>
    </message>
    <message>
        <source>第%1行参数中有参数组号错误，请检查</source>
        <translation>Row %1 of the parameters has a wrong group number, please check</translation>
    </message>
    <message>
        <source>请选择一组参数</source>
        <translation>Please select a parameter group</translation>
    </message>
    <message>
        <source>只能选择一组参数</source>
        <translation>Only one parameter group can be selected</translation>
    </message>
    <message>
        <source>没有编号为</source>
        <translation>There is no relay type with number </translation>
    </message>
    <message>
        <source>的保护类型</source>
        <translation> in the rule library</translation>
    </message>
    <message>
        <source>网络中没有可以装设</source>
        <translation>The network has no place for </translation>
    </message>
    <message>
        <source>的位置: </source>
        <translation> at: </translation>
    </message>
    <message>
        <source>侧</source>
        <translation> side</translation>
    </message>
    <message>
        <source>CT或PT变比不能为0</source>
        <translation>CT and PT ratios must not be 0</translation>
    </message>
    <message>
        <source>开始自动装设虚拟保护.....</source>
        <translation>Installing virtual relays.....</translation>
    </message>
    <message>
        <source>自动装设虚拟保护完毕</source>
        <translation>Virtual relays installed</translation>
    </message>
    <message>
        <source>行,R的输入类型有错误</source>
        <translation>: R is not a number</translation>
    </message>
    <message>
        <source>行,X的输入类型有错误</source>
        <translation>: X is not a number</translation>
    </message>
    <message>
        <source>行,支路名不能为空</source>
        <translation>: the branch needs a name</translation>
    </message>
    <message>
        <source>行,支路I侧节点名不能为空</source>
        <translation>: the node at the I side is missing</translation>
    </message>
    <message>
        <source>行,支路J侧节点名不能为空</source>
        <translation>: the node at the J side is missing</translation>
    </message>
    <message>
        <source>运行方式内容不能为空</source>
        <translation>The operating mode is empty</translation>
    </message>
    <message>
        <source>运行方式名不能为空</source>
        <translation>The operating mode needs a name</translation>
    </message>
    <message>
        <source>运行方式名不能为*NEW_VALUE*</source>
        <translation>The operating mode must not be named *NEW_VALUE*</translation>
    </message>
    <message>
        <source>运行方式</source>
        <translation>Operating mode </translation>
    </message>
    <message>
        <source>运行方式已经存在</source>
        <translation>The operating mode already exists</translation>
    </message>
    <message>
        <source>初始化计算数据...</source>
        <translation>Preparing the calculation...</translation>
    </message>
    <message>
        <source>确定计算顺序...</source>
        <translation>Finding the order of calculation...</translation>
    </message>
    <message>
        <source>作业中没有整定原则</source>
        <translation>The case does not have setting rule </translation>
    </message>
    <message>
        <source>整定原则</source>
        <translation>Setting rule </translation>
    </message>
    <message>
        <source>不能又采用又不用</source>
        <translation> cannot be both used and left out</translation>
    </message>
    <message>
        <source>作业中涉及的某些保护不存在，请检查数据</source>
        <translation>Some relays of the case do not exist; please check the data</translation>
    </message>
    <message>
        <source>链表更新错误</source>
        <translation>The list could not be updated</translation>
    </message>
    <message>
        <source>作业的保护类型已经不存在</source>
        <translation>The relay type of the case does not exist any more</translation>
    </message>
    <message>
        <source>没有内部作业号为</source>
        <translation>There is no case with number </translation>
    </message>
    <message>
        <source>的作业的信息</source>
        <translation> in the project</translation>
    </message>
    <message>
        <source>作业名不能为空</source>
        <translation>The case needs a name</translation>
    </message>
    <message>
        <source>请选择一个方案或潮流作业</source>
        <translation>Please choose a scheme or a load-flow case</translation>
    </message>
    <message>
        <source>作业</source>
        <translation>Case </translation>
    </message>
    <message>
        <source>作业名已经定义，请更换作业号</source>
        <translation>There is a case of that name; please choose another</translation>
    </message>
    <message>
        <source>保护   定值 </source>
        <translation> relay, setting </translation>
    </message>
    <message>
        <source> 的数据有错误，请检查</source>
        <translation> is wrong; please check</translation>
    </message>
    <message>
        <source>作业内必须要有待整定保护</source>
        <translation>The case needs relays to be set</translation>
    </message>
    <message>
        <source>潮流作业名没有对应的作业号</source>
        <translation>The load-flow case has no number</translation>
    </message>
    <message>
        <source>支路数据抽取错误</source>
        <translation>Reading the branches failed</translation>
    </message>
    <message>
        <source>查询</source>
        <translation>Reading the </translation>
    </message>
    <message>
        <source>作业信息发生错误！</source>
        <translation> case header failed!</translation>
    </message>
    <message>
        <source>作业信息表中没有当前作业号的记录！</source>
        <translation> case header: there is no record of this case!</translation>
    </message>
    <message>
        <source>暂稳</source>
        <translation>stability</translation>
    </message>
    <message>
        <source>潮流</source>
        <translation>load-flow</translation>
    </message>
    <message>
        <source>动作时间没有结果</source>
        <translation>no result for the operating time</translation>
    </message>
    <message>
        <source>没有结果</source>
        <translation>no result</translation>
    </message>
    <message>
        <source>没有适用的整定原则</source>
        <translation>no setting rule applies</translation>
    </message>
    <message>
        <source>没有结果: </source>
        <translation>no result: </translation>
    </message>
    <message>
        <source>与之配合的段还没有定值</source>
        <translation>the part to coordinate with has no setting yet</translation>
    </message>
    <message>
        <source>保护对相邻支路没有助增，或电流方向相反</source>
        <translation>the relay feeds nothing into the adjacent branch, or the currents oppose</translation>
    </message>
    <message>
        <source>规定的故障下保护没有电流</source>
        <translation>the relay sees no current in the faults given</translation>
    </message>
    <message>
        <source>计算程序没有正常结束</source>
        <translation>the calculating program did not end well</translation>
    </message>
    <message>
        <source>计算程序不能启动</source>
        <translation>the calculating program did not start</translation>
    </message>
    <message>
        <source>没有结果的整定原则不能保存</source>
        <translation>The rules without a result cannot be stored</translation>
    </message>
    <message>
        <source>正在计算，不能修改定值</source>
        <translation>A calculation is under way, settings cannot be changed</translation>
    </message>
    <message>
        <source>本次计算中没有这条整定原则</source>
        <translation>The calculation does not have this rule</translation>
    </message>
    <message>
        <source>重新计算没有完成，仍是原来的结果: </source>
        <translation>Not calculated again, the results are those of before: </translation>
    </message>
    <message>
        <source>没有分支系数</source>
        <translation>there is no branch coefficient</translation>
    </message>
    <message>
        <source>保护所在元件不在网络中</source>
        <translation>the element of the relay is not in the network</translation>
    </message>
    <message>
        <source>保护没有参加计算</source>
        <translation>the relay takes no part</translation>
    </message>
    <message>
        <source>结果超出定值的范围</source>
        <translation>the result is beyond the range of settings</translation>
    </message>
    <message>
        <source>没有适合的故障、相邻支路或配合保护</source>
        <translation>no fault, adjacent branch or relay to coordinate with fits</translation>
    </message>
    <message>
        <source>其他原因（</source>
        <translation>another reason (</translation>
    </message>
    <message>
        <source>保护</source>
        <translation>Relay </translation>
    </message>
    <message>
        <source> 段 整定原则 </source>
        <translation> part, setting rule </translation>
    </message>
    <message>
        <source> 没有结果: </source>
        <translation>: no result: </translation>
    </message>
    <message>
        <source>定值的数据类型错误，或者小于零</source>
        <translation>The setting is not a number or below zero</translation>
    </message>
    <message>
        <source>重新计算 </source>
        <translation>Recalculating </translation>
    </message>
    <message>
        <source> 段 整定规则:</source>
        <translation> part, setting rule: </translation>
    </message>
    <message>
        <source>计算中与数据库服务器的连接中断，计算中止</source>
        <translation>The connection to the database server was lost; the calculation was stopped</translation>
    </message>
    <message>
        <source>没有端子</source>
        <translation>has no terminal</translation>
    </message>
    <message>
        <source>应有两个端子，有 </source>
        <translation>two terminals are expected, there are </translation>
    </message>
    <message>
        <source> 个</source>
        <translation> of them</translation>
    </message>
    <message>
        <source>开关</source>
        <translation>Switch</translation>
    </message>
    <message>
        <source>两端是同一节点，不导入</source>
        <translation>both ends are at the same node, not imported</translation>
    </message>
    <message>
        <source>线路</source>
        <translation>Line</translation>
    </message>
    <message>
        <source>最大负荷电流取允许电流</source>
        <translation>the permissible current is taken as largest load current</translation>
    </message>
    <message>
        <source>没有允许电流</source>
        <translation>has no permissible current</translation>
    </message>
    <message>
        <source>没有它所耦合的两条线路</source>
        <translation>the two lines that it couples are missing</translation>
    </message>
    <message>
        <source>串联补偿</source>
        <translation>Series compensator</translation>
    </message>
    <message>
        <source>按线路导入</source>
        <translation>imported as a line</translation>
    </message>
    <message>
        <source>没有长度</source>
        <translation>has no length</translation>
    </message>
    <message>
        <source>厂站</source>
        <translation>Station</translation>
    </message>
    <message>
        <source>节点</source>
        <translation>Node</translation>
    </message>
    <message>
        <source>节点“</source>
        <translation>node “</translation>
    </message>
    <message>
        <source>”没有基准电压</source>
        <translation>” has no base voltage</translation>
    </message>
    <message>
        <source>边界模型</source>
        <translation>Boundary model</translation>
    </message>
    <message>
        <source>节点没有定义</source>
        <translation>the node is not defined</translation>
    </message>
    <message>
        <source>端子没有节点，可能缺少拓扑文件</source>
        <translation>the terminal has no node; the topology file may be missing</translation>
    </message>
    <message>
        <source>中性点</source>
        <translation>Neutral</translation>
    </message>
    <message>
        <source>没有设备模型（EQ）文件</source>
        <translation>there is no equipment (EQ) file</translation>
    </message>
    <message>
        <source>缺文件</source>
        <translation>file missing</translation>
    </message>
    <message>
        <source>运行状态</source>
        <translation>Operating state</translation>
    </message>
    <message>
        <source>开关取正常位置，出力和负荷取 0</source>
        <translation>switches stand as normal; generation and load are taken as 0</translation>
    </message>
    <message>
        <source>短路数据</source>
        <translation>Short-circuit data</translation>
    </message>
    <message>
        <source>模型不含短路数据</source>
        <translation>the model has no short-circuit data</translation>
    </message>
    <message>
        <source>读文件</source>
        <translation>Reading files</translation>
    </message>
    <message>
        <source>建立节点</source>
        <translation>Making nodes</translation>
    </message>
    <message>
        <source>读设备</source>
        <translation>Reading equipment</translation>
    </message>
    <message>
        <source>检查</source>
        <translation>Checking</translation>
    </message>
    <message>
        <source>读入完成</source>
        <translation>Read</translation>
    </message>
    <message>
        <source>发电机</source>
        <translation>Generator</translation>
    </message>
    <message>
        <source>没有短路数据，取 X" = 0.20、X0 = 0.10，中性点接地</source>
        <translation>no short-circuit data; X" = 0.20, X0 = 0.10 and a grounded neutral are taken</translation>
    </message>
    <message>
        <source>没有额定容量，取 1.1 max(Pmax, 10) MVA</source>
        <translation>no rated power; 1.1 max(Pmax, 10) MVA is taken</translation>
    </message>
    <message>
        <source>异步电动机</source>
        <translation>Asynchronous motor</translation>
    </message>
    <message>
        <source>外部电网</source>
        <translation>Network feeder</translation>
    </message>
    <message>
        <source>等值注入</source>
        <translation>Equivalent injection</translation>
    </message>
    <message>
        <source>并联补偿</source>
        <translation>Shunt compensator</translation>
    </message>
    <message>
        <source>电纳为零，不导入</source>
        <translation>zero susceptance, not imported</translation>
    </message>
    <message>
        <source>负荷</source>
        <translation>Load</translation>
    </message>
    <message>
        <source>这类设备不导入</source>
        <translation>equipment of this kind is not imported</translation>
    </message>
    <message>
        <source>没有状态变量文件，不建潮流作业</source>
        <translation>no state-variable file; no load-flow case is made</translation>
    </message>
    <message>
        <source>没有坐标</source>
        <translation>has no coordinates</translation>
    </message>
    <message>
        <source>变压器</source>
        <translation>Transformer</translation>
    </message>
    <message>
        <source>有一侧断开，按退出运行导入</source>
        <translation>one side is disconnected; imported out of service</translation>
    </message>
    <message>
        <source>两侧是同一节点，不导入</source>
        <translation>both sides are at the same node, not imported</translation>
    </message>
    <message>
        <source>有 </source>
        <translation>has </translation>
    </message>
    <message>
        <source> 个绕组，只能是 2 或 3</source>
        <translation> windings; only 2 or 3 are possible</translation>
    </message>
    <message>
        <source>没有零序数据和接地方式，星形侧按中性点直接接地</source>
        <translation>no zero-sequence data or grounding; star sides are taken as solidly grounded</translation>
    </message>
    <message>
        <source>两绕组变压器</source>
        <translation>Two-winding transformer</translation>
    </message>
    <message>
        <source>三绕组变压器</source>
        <translation>Three-winding transformer</translation>
    </message>
    <message>
        <source>并联电容器电抗器</source>
        <translation>Shunt capacitor or reactor</translation>
    </message>
    <message>
        <source>互感</source>
        <translation>Mutual coupling</translation>
    </message>
    <message>
        <source>基础方案</source>
        <translation>Base scheme</translation>
    </message>
    <message>
        <source>潮流作业</source>
        <translation>Load-flow case</translation>
    </message>
    <message>
        <source>导入</source>
        <translation>imported</translation>
    </message>
    <message>
        <source>”重名</source>
        <translation>” occurs twice</translation>
    </message>
    <message>
        <source>电容器电抗器</source>
        <translation>Capacitor or reactor</translation>
    </message>
    <message>
        <source>”：没有节点“</source>
        <translation>”: there is no node “</translation>
    </message>
    <message>
        <source>”：阻抗不是有限的数</source>
        <translation>”: the impedance is not a finite number</translation>
    </message>
    <message>
        <source>”：阻抗过大</source>
        <translation>”: the impedance is too large</translation>
    </message>
    <message>
        <source>线路零序</source>
        <translation>Line, zero sequence</translation>
    </message>
    <message>
        <source>”与“</source>
        <translation>” and “</translation>
    </message>
    <message>
        <source>”的互感：</source>
        <translation>”, mutual coupling: </translation>
    </message>
    <message>
        <source>线路与自身不能有互感</source>
        <translation>a line cannot be coupled with itself</translation>
    </message>
    <message>
        <source>没有这条线路</source>
        <translation>there is no such line</translation>
    </message>
    <message>
        <source>耦合段没有长度</source>
        <translation>the coupled stretch has no length</translation>
    </message>
    <message>
        <source>不小于线路本身的零序阻抗</source>
        <translation>not smaller than the zero-sequence impedance of the lines themselves</translation>
    </message>
    <message>
        <source>为零，不导入</source>
        <translation>is zero, not imported</translation>
    </message>
    <message>
        <source>变压器零序</source>
        <translation>Transformer, zero sequence</translation>
    </message>
    <message>
        <source>三绕组变压器支路</source>
        <translation>Winding of a three-winding transformer</translation>
    </message>
    <message>
        <source>三绕组变压器零序支路</source>
        <translation>Winding of a three-winding transformer, zero sequence</translation>
    </message>
    <message>
        <source>”：基准电压不在 0.001 至 10000 kV 之间</source>
        <translation>”: the base voltage is not between 0.001 and 10000 kV</translation>
    </message>
    <message>
        <source>电压不大于 0，改为 1</source>
        <translation>voltage not above 0, changed to 1</translation>
    </message>
    <message>
        <source>”：额定容量或额定电压超出范围</source>
        <translation>”: rated power or voltage out of range</translation>
    </message>
    <message>
        <source>中性点接地而 x0 = 0</source>
        <translation>grounded neutral with x0 = 0</translation>
    </message>
    <message>
        <source>发电机零序</source>
        <translation>Generator, zero sequence</translation>
    </message>
    <message>
        <source>”：阻抗不是有限的数或过大</source>
        <translation>”: the impedance is not a finite number or too large</translation>
    </message>
    <message>
        <source>两端基准电压不同</source>
        <translation>the ends have different base voltages</translation>
    </message>
    <message>
        <source>额定电压与节点基准电压相差过大</source>
        <translation>the rated voltage is far from the base voltage of the node</translation>
    </message>
    <message>
        <source>孤岛</source>
        <translation>Island</translation>
    </message>
    <message>
        <source>没有电源，以其首个节点表示</source>
        <translation>has no source; its first node stands for it</translation>
    </message>
    <message>
        <source>有线路而没有中性点接地，以其首个节点表示</source>
        <translation>has lines and no grounded neutral; its first node stands for it</translation>
    </message>
    <message>
        <source>网络没有节点</source>
        <translation>the network has no nodes</translation>
    </message>
    <message>
        <source>网络没有基础方案</source>
        <translation>the network has no base scheme</translation>
    </message>
    <message>
        <source>不是能打开的压缩文件：</source>
        <translation>cannot be opened as an archive: </translation>
    </message>
    <message>
        <source>不能读取：</source>
        <translation>cannot be read: </translation>
    </message>
    <message>
        <source>文件过大</source>
        <translation>the file is too large</translation>
    </message>
    <message>
        <source>压缩文件已损坏</source>
        <translation>the archive is damaged</translation>
    </message>
    <message>
        <source>压缩文件嵌套过深</source>
        <translation>archives are nested too deeply</translation>
    </message>
    <message>
        <source>没有 XML 文件</source>
        <translation>there is no XML file</translation>
    </message>
    <message>
        <source>XML 有错：</source>
        <translation>XML error: </translation>
    </message>
    <message>
        <source>不是 CIM16 或 CIM100 的网络模型</source>
        <translation>no CIM16 or CIM100 network model</translation>
    </message>
    <message>
        <source>是差异模型，只能导入完整模型</source>
        <translation>a difference model; only full models can be imported</translation>
    </message>
    <message>
        <source>对象没有标识</source>
        <translation>the object has no identifier</translation>
    </message>
    <message>
        <source> 的值“</source>
        <translation>: the value “</translation>
    </message>
    <message>
        <source>”不是数</source>
        <translation>” is not a number</translation>
    </message>
    <message>
        <source>文件不存在</source>
        <translation>the file does not exist</translation>
    </message>
    <message>
        <source>电压必须大于 0</source>
        <translation>the voltage must be above 0</translation>
    </message>
    <message>
        <source>node_type 必须是 0 或 1</source>
        <translation>node_type must be 0 or 1</translation>
    </message>
    <message>
        <source>length_km 不能小于 0</source>
        <translation>length_km must not be below 0</translation>
    </message>
    <message>
        <source>开关两端的基准电压不同</source>
        <translation>the ends of the switch have different base voltages</translation>
    </message>
    <message>
        <source>sense 必须是 1 或 -1</source>
        <translation>sense must be 1 or -1</translation>
    </message>
    <message>
        <source>number 必须大于 0</source>
        <translation>number must be above 0</translation>
    </message>
    <message>
        <source>潮流作业编号重复</source>
        <translation>the number of the load-flow case occurs twice</translation>
    </message>
    <message>
        <source>m10 必须是 0 或 1</source>
        <translation>m10 must be 0 or 1</translation>
    </message>
    <message>
        <source>未切除的支路必须给出 r 和 x</source>
        <translation>a branch that is not cut out needs r and x</translation>
    </message>
    <message>
        <source>没有支路“</source>
        <translation>there is no branch “</translation>
    </message>
    <message>
        <source>没有潮流作业 </source>
        <translation>there is no load-flow case </translation>
    </message>
    <message>
        <source>”与第 </source>
        <translation>” is the same name as in line </translation>
    </message>
    <message>
        <source> 行重名</source>
        <translation> (twice)</translation>
    </message>
    <message>
        <source>”的两端是同一节点</source>
        <translation>” has both ends at the same node</translation>
    </message>
    <message>
        <source>没有定义“</source>
        <translation>not defined: “</translation>
    </message>
    <message>
        <source>没有节点“</source>
        <translation>there is no node “</translation>
    </message>
    <message>
        <source> 必须大于 0</source>
        <translation> must be above 0</translation>
    </message>
    <message>
        <source>”不是 </source>
        <translation>” is none of: </translation>
    </message>
    <message>
        <source> 之一</source>
        <translation>.</translation>
    </message>
    <message>
        <source>短路损耗大于短路电压所允许的值</source>
        <translation>the load losses are larger than the impedance voltage allows</translation>
    </message>
    <message>
        <source>互感区段必须满足 0 &lt;= from &lt; to &lt;= 100</source>
        <translation>the coupled stretch must hold 0 &lt;= from &lt; to &lt;= 100</translation>
    </message>
    <message>
        <source>不是网络数据的文件名</source>
        <translation>no file name of network data</translation>
    </message>
    <message>
        <source>不是目录</source>
        <translation>no folder</translation>
    </message>
    <message>
        <source>读网络数据</source>
        <translation>Reading the network</translation>
    </message>
    <message>
        <source>不能为空</source>
        <translation>must not be empty</translation>
    </message>
    <message>
        <source>”不是整数</source>
        <translation>” is not a whole number</translation>
    </message>
    <message>
        <source>”不是 0 或 1</source>
        <translation>” is neither 0 nor 1</translation>
    </message>
    <message>
        <source>没有定义的列“</source>
        <translation>unknown column “</translation>
    </message>
    <message>
        <source>列“</source>
        <translation>column “</translation>
    </message>
    <message>
        <source>”重复</source>
        <translation>” occurs twice</translation>
    </message>
    <message>
        <source>缺少列“</source>
        <translation>missing column “</translation>
    </message>
    <message>
        <source>引号之后有多余的字符</source>
        <translation>characters behind the closing quote</translation>
    </message>
    <message>
        <source>引号没有结束</source>
        <translation>the quote is not closed</translation>
    </message>
    <message>
        <source>不是 UTF-8 编码</source>
        <translation>not UTF-8</translation>
    </message>
    <message>
        <source>没有表头</source>
        <translation>there is no header</translation>
    </message>
    <message>
        <source> 个字段，表头有 </source>
        <translation> fields, the header has </translation>
    </message>
    <message>
        <source>节点号 </source>
        <translation>bus number </translation>
    </message>
    <message>
        <source> 重复</source>
        <translation> occurs twice</translation>
    </message>
    <message>
        <source>支路两端是同一节点</source>
        <translation>both ends of the branch are at the same bus</translation>
    </message>
    <message>
        <source>没有短路数据，取 X" = 0.20、X0 = 0.10，容量 1.1 max(Pmax, 10) MVA，中性点接地</source>
        <translation>no short-circuit data; X" = 0.20, X0 = 0.10 on 1.1 max(Pmax, 10) MVA and a grounded neutral are taken</translation>
    </message>
    <message>
        <source>没有接线方式，两侧按中性点直接接地</source>
        <translation>no vector group; both sides are taken as solidly grounded</translation>
    </message>
    <message>
        <source>基准电压为 0，取 110 kV</source>
        <translation>base voltage 0; 110 kV is taken</translation>
    </message>
    <message>
        <source>最大负荷电流取额定电流</source>
        <translation>the rated current is taken as largest load current</translation>
    </message>
    <message>
        <source>没有额定电流</source>
        <translation>has no rated current</translation>
    </message>
    <message>
        <source>并联电导不导入</source>
        <translation>shunt conductance is not imported</translation>
    </message>
    <message>
        <source>阻抗小于 1e-6，改为 j1e-6</source>
        <translation>impedance below 1e-6, changed to j1e-6</translation>
    </message>
    <message>
        <source>孤立节点不导入</source>
        <translation>isolated bus, not imported</translation>
    </message>
    <message>
        <source>支路和发电机</source>
        <translation>Branch or generator</translation>
    </message>
    <message>
        <source>未投入，不导入</source>
        <translation>out of service, not imported</translation>
    </message>
    <message>
        <source>第 </source>
        <translation>column </translation>
    </message>
    <message>
        <source> 列不是有限的数</source>
        <translation> is not a finite number</translation>
    </message>
    <message>
        <source> 列不是整数</source>
        <translation> is not a whole number</translation>
    </message>
    <message>
        <source>没有节点 </source>
        <translation>there is no bus </translation>
    </message>
    <message>
        <source>读算例</source>
        <translation>Reading the case</translation>
    </message>
    <message>
        <source>没有 mpc.baseMVA，不是 MATPOWER 第 2 版算例</source>
        <translation>there is no mpc.baseMVA; not a MATPOWER case of version 2</translation>
    </message>
    <message>
        <source>mpc.baseMVA 后面没有“=”</source>
        <translation>no “=” behind mpc.baseMVA</translation>
    </message>
    <message>
        <source>不是数：</source>
        <translation>not a number: </translation>
    </message>
    <message>
        <source> 从第 </source>
        <translation> opens in line </translation>
    </message>
    <message>
        <source> 行开始，没有结束</source>
        <translation> and is not closed</translation>
    </message>
    <message>
        <source> 这一行有 </source>
        <translation>: this row has </translation>
    </message>
    <message>
        <source> 列，前面的有 </source>
        <translation> columns, those before have </translation>
    </message>
    <message>
        <source> 列</source>
        <translation> columns</translation>
    </message>
    <message>
        <source>mpc.bus_name 没有结束</source>
        <translation>mpc.bus_name is not closed</translation>
    </message>
    <message>
        <source>没有 </source>
        <translation>there is no </translation>
    </message>
    <message>
        <source>，不是 MATPOWER 第 2 版算例</source>
        <translation>; not a MATPOWER case of version 2</translation>
    </message>
    <message>
        <source> 只有 </source>
        <translation> has only </translation>
    </message>
    <message>
        <source> 列，应有 </source>
        <translation> columns; needed are </translation>
    </message>
    <message>
        <source>名称为空</source>
        <translation>the name is empty</translation>
    </message>
    <message>
        <source>名称末尾有空格</source>
        <translation>the name ends in a blank</translation>
    </message>
    <message>
        <source>名称超过 </source>
        <translation>the name is longer than </translation>
    </message>
    <message>
        <source> 个字符</source>
        <translation> characters</translation>
    </message>
    <message>
        <source>名称中有控制字符</source>
        <translation>the name has a control character</translation>
    </message>
    <message>
        <source>名称中有 GBK 以外的字符“</source>
        <translation>the name has a character outside GBK: “</translation>
    </message>
    <message>
        <source>名称“</source>
        <translation>name “</translation>
    </message>
    <message>
        <source>”改为“</source>
        <translation>” changed to “</translation>
    </message>
    <message>
        <source>才能存入，未允许修改名称</source>
        <translation> would be needed to store it; changing names was not allowed</translation>
    </message>
    <message>
        <source>不是 CSV 目录、CGMES 模型或 MATPOWER 算例</source>
        <translation>no CSV folder, CGMES model or MATPOWER case</translation>
    </message>
    <message>
        <source>读入</source>
        <translation>imported</translation>
    </message>
    <message>
        <source>取缺省值</source>
        <translation>default</translation>
    </message>
    <message>
        <source>缺少</source>
        <translation>missing</translation>
    </message>
    <message>
        <source>可疑</source>
        <translation>doubtful</translation>
    </message>
    <message>
        <source>改动</source>
        <translation>changed</translation>
    </message>
    <message>
        <source> 个没有零序数据，未允许使用缺省值</source>
        <translation> without zero-sequence data; defaults were not allowed</translation>
    </message>
    <message>
        <source>没有零序数据，取 </source>
        <translation>no zero-sequence data; taken: </translation>
    </message>
    <message>
        <source>并联电抗器</source>
        <translation>Shunt reactor</translation>
    </message>
    <message>
        <source> 等</source>
        <translation> and others</translation>
    </message>
    <message>
        <source>没有短路阻抗，按负荷导入</source>
        <translation>there is no short-circuit impedance, imported as a load</translation>
    </message>
    <message>
        <source>阻抗为零，改为 j1e-6</source>
        <translation>the impedance is zero, changed to j1e-6</translation>
    </message>
    <message>
        <source>线路“</source>
        <translation>Line “</translation>
    </message>
    <message>
        <source>变压器“</source>
        <translation>Transformer “</translation>
    </message>
    <message>
        <source>没有计算结果，不能生成计算书</source>
        <translation>There are no results; the calculation book cannot be made</translation>
    </message>
    <message>
        <source>不能写文件 </source>
        <translation>Cannot write the file </translation>
    </message>
    <message>
        <source>计算书中有GBK字符集以外的字符，写成“?”: </source>
        <translation>The calculation book has characters outside GBK, written as “?”: </translation>
    </message>
    <message>
        <source>生成计算书失败</source>
        <translation>The calculation book could not be made</translation>
    </message>
    <message>
        <source>”：数值超出范围</source>
        <translation>”: a value is out of range</translation>
    </message>
    <message>
        <source>、</source>
        <translation>, </translation>
    </message>
    <message>
        <source>：</source>
        <translation>: </translation>
    </message>
    <message>
        <source>列 </source>
        <translation>column </translation>
    </message>
    <message>
        <source>新</source>
        <translation>new</translation>
    </message>
    <message>
        <source>切换网络失败，实时库中的网络不完整，不能计算</source>
        <translation>The network could not be switched and is incomplete in the real-time database; nothing can be calculated</translation>
    </message>
    <message>
        <source>被拷贝的作业已经不存在</source>
        <translation>The case that was copied no longer exists</translation>
    </message>
    <message>
        <source>规则库中没有可整定的保护类型</source>
        <translation>The rule database has no relay type for which a case can be defined</translation>
    </message>
    <message>
        <source>作业名与被拷贝的作业相同，请更改作业名</source>
        <translation>The case now bears the name of the one that was copied; give it another name</translation>
    </message>
    <message>
        <source>不能编辑作业</source>
        <translation>cases cannot be edited</translation>
    </message>
    <message>
        <source>没有定义潮流作业</source>
        <translation>No load-flow case is defined</translation>
    </message>
    <message>
        <source>没有定义方案</source>
        <translation>No scheme is defined</translation>
    </message>
    <message>
        <source>另一个程序正在该工程中计算，请稍后再试</source>
        <translation>Another program calculates in this project; try again later</translation>
    </message>
    <message>
        <source>上一次计算没有正常结束，已恢复计算前的数据</source>
        <translation>The last calculation did not end properly; the data before it have been restored</translation>
    </message>
    <message>
        <source>不能恢复上一次计算前的数据</source>
        <translation>The data before the last calculation cannot be restored</translation>
    </message>
    <message>
        <source>不能写文件%1：%2</source>
        <translation>Cannot write the file %1: %2</translation>
    </message>
    <message>
        <source>该定值没有灵敏度校验</source>
        <translation>This setting has no sensitivity check</translation>
    </message>
    <message>
        <source>定值为0，没有灵敏度</source>
        <translation>No sensitivity: the setting is 0</translation>
    </message>
    <message>
        <source>参量未计算</source>
        <translation>not calculated</translation>
    </message>
    <message>
        <source>参量未计算，请按“计算灵敏度参量”</source>
        <translation>The parameter has not been calculated: press “Calculate Sensitivity Parameters”</translation>
    </message>
    <message>
        <source>有参量没有算出值的保护位置: </source>
        <translation>Locations with a parameter that has no computed value: </translation>
    </message>
    <message>
        <source> 处，其灵敏度没有结果</source>
        <translation>; its sensitivity has no result</translation>
    </message>
    <message>
        <source>计算书中没有结果、写作0的规则数: </source>
        <translation>Rules without a result, written as 0 in the book: </translation>
    </message>
    <message>
        <source>没有规定灵敏度的算法</source>
        <translation>No sensitivity: how to form it is not given</translation>
    </message>
    <message>
        <source>参量值为0，没有灵敏度，请计算灵敏度参量或换用另一参量</source>
        <translation>No sensitivity: the parameter is 0; calculate the sensitivity parameters or use the other one</translation>
    </message>
    <message>
        <source>本线路 </source>
        <translation>Own line </translation>
    </message>
    <message>
        <source>测量阻抗 </source>
        <translation>Measured impedance </translation>
    </message>
    <message>
        <source>（图外）</source>
        <translation> (outside the picture)</translation>
    </message>
    <message>
        <source>另有 %1 条支路</source>
        <translation>%1 further branches</translation>
    </message>
    <message>
        <source>没有选定保护</source>
        <translation>No relay is selected</translation>
    </message>
    <message>
        <source>该保护没有阻抗定值，没有阻抗平面图</source>
        <translation>This relay has no impedance settings and so no R-X picture</translation>
    </message>
    <message>
        <source>画法: 各段按过原点、直径为定值、沿线路阻抗角的圆画</source>
        <translation>Convention: each stage is drawn as the circle through the origin whose diameter is the setting at the angle of the line</translation>
    </message>
    <message>
        <source>测量阻抗只算出大小，画成圆弧</source>
        <translation>Measured impedances are calculated by magnitude only and drawn as arcs</translation>
    </message>
    <message>
        <source>阻抗平面图</source>
        <translation>R-X picture</translation>
    </message>
    <message>
        <source>与之配合的%1不在本线路对侧，没有画</source>
        <translation>%1, with which the relay coordinates, does not stand behind the line and is not drawn</translation>
    </message>
    <message>
        <source>基础网络</source>
        <translation>base network</translation>
    </message>
    <message>
        <source>三相短路接地</source>
        <translation>three-phase to ground</translation>
    </message>
    <message>
        <source>单相接地短路</source>
        <translation>single-phase to ground</translation>
    </message>
    <message>
        <source>两相短路</source>
        <translation>two-phase</translation>
    </message>
    <message>
        <source>两相接地短路</source>
        <translation>two-phase to ground</translation>
    </message>
    <message>
        <source>三相断线</source>
        <translation>three phases open</translation>
    </message>
    <message>
        <source>单相断线</source>
        <translation>one phase open</translation>
    </message>
    <message>
        <source>两相断线</source>
        <translation>two phases open</translation>
    </message>
    <message>
        <source>%1伸出本线路末端：%2 &gt; %3</source>
        <translation>%1 reaches beyond the end of the line: %2 &gt; %3</translation>
    </message>
    <message>
        <source>%1在本线路末端故障时会动作：%2 &lt; %3</source>
        <translation>%1 acts in a fault at the end of the line: %2 &lt; %3</translation>
    </message>
    <message>
        <source>%1与%2的%3时差 %4</source>
        <translation>%1 against %3 of %2: time difference %4</translation>
    </message>
    <message>
        <source>电流方向与本保护相反，不需配合: %1</source>
        <translation>Current opposes that of this relay, no coordination needed: %1</translation>
    </message>
    <message>
        <source>没有分支系数，按 1 画，不校核时差: %1</source>
        <translation>No branch coefficient, drawn with 1, times not checked: %1</translation>
    </message>
    <message>
        <source>本线路对侧没有其他线路和变压器</source>
        <translation>There is no other line or transformer behind this line</translation>
    </message>
    <message>
        <source>没有算出故障时的测量阻抗</source>
        <translation>No measured impedance of a fault has been calculated</translation>
    </message>
    <message>
        <source>没有算出本线路末端短路时的电流，不校核一段是否超越</source>
        <translation>No current of a short circuit at the end of the line has been calculated; whether stage I overreaches is not checked</translation>
    </message>
    <message>
        <source>保护不在线路或变压器上，没有阻抗平面</source>
        <translation>The relay does not stand at a line or transformer; there is no impedance plane</translation>
    </message>
    <message>
        <source>保护所在的支路不在当前网络中</source>
        <translation>The branch of the relay is not in the present network</translation>
    </message>
    <message>
        <source>网络中没有支路“%1”的阻抗或基准电压</source>
        <translation>The network has no impedance or base voltage for branch “%1”</translation>
    </message>
    <message>
        <source>%1没有定值</source>
        <translation>%1 has no setting</translation>
    </message>
    <message>
        <source>%1没有动作时间</source>
        <translation>%1 has no operating time</translation>
    </message>
    <message>
        <source>%1段</source>
        <translation>Stage %1</translation>
    </message>
    <message>
        <source>时间未知</source>
        <translation>time unknown</translation>
    </message>
    <message>
        <source>，没有同类保护</source>
        <translation>, no relay of this type</translation>
    </message>
    <message>
        <source>，助增系数 %1</source>
        <translation>, assist coefficient %1</translation>
    </message>
    <message>
        <source>，分支系数 %1</source>
        <translation>, branch coefficient %1</translation>
    </message>
    <message>
        <source>（二次）</source>
        <translation> (secondary)</translation>
    </message>
    <message>
        <source>（一次）</source>
        <translation> (primary)</translation>
    </message>
    <message>
        <source>（以上为一次值）</source>
        <translation>(primary values)</translation>
    </message>
    <message>
        <source>测量阻抗</source>
        <translation>Measured impedance</translation>
    </message>
    <message>
        <source>流过本保护的电流</source>
        <translation>Current through this relay</translation>
    </message>
    <message>
        <source>动作时间 / s</source>
        <translation>Operating time / s</translation>
    </message>
    <message>
        <source>本线路末端 </source>
        <translation>End of the line </translation>
    </message>
    <message>
        <source>没有可画的段: </source>
        <translation>There is no stage to draw: </translation>
    </message>
    <message>
        <source>时间配合图</source>
        <translation>Time coordination</translation>
    </message>
    <message>
        <source>%1等 %2 处</source>
        <translation>%1 and others, %2 in all</translation>
    </message>
</context>
</TS>
